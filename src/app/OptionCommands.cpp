#include "app/OptionCommands.h"

#include "app/ConsolePanel.h"
#include "app/Desk.h"
#include "app/frmOptionen.h"
#include "archive/ui/ArchivePanel.h"
#include "playback/ui/MixerPanel.h"
#include "widgets/SkinStyle.h"

#include <QAction>
#include <QMenu>

namespace kalvo {

OptionCommands::OptionCommands(Desk& desk, QMenu& settingsMenu, ArchivePanel& archive, ConsolePanel& console,
                               QWidget& window)
    : QObject(&window),
      desk_(desk),
      archive_(archive),
      console_(console),
      window_(window),
      chartsPath_(desk.folder.Path(QStringLiteral("\\optionen.dll"))),
      tone_(desk.layer),
      emergency_(desk.mixer) {
    auto* open = new QAction(tr("&Optionen..."), this);
    open->setObjectName(QStringLiteral("Optionen"));
    open->setShortcut(Qt::CTRL | Qt::Key_Comma);
    open->setAutoRepeat(false);
    connect(open, &QAction::triggered, this, &OptionCommands::Open);
    settingsMenu.addSeparator();
    settingsMenu.addAction(open);
    const OptionValues values = Current();
    ApplyViews(values);
    desk_.mixer.SetUseCuePoints(values.useCuePoints);
    connect(&emergency_, &EmergencyLoader::Failed, this, &OptionCommands::Warned);
    emergency_.Choose(values.emergencyTitle, values.emergencyAtEnd);
}

/** What the file holds; the menus change some of it that is written only when the program ends. */
OptionValues OptionCommands::Current() const {
    OptionValues values = OptionValues::Read(desk_.settings, chartsPath_, SkinStyle::Units().F());
    const MixerOptions& mixing = desk_.mixer.Options();
    values.fadeMode = mixing.mode;
    values.fadeInterval = mixing.fadeInterval;
    values.switchOver = mixing.switchOver;
    values.removePlayed = mixing.removePlayed;
    values.volume = console_.Mixing().Volume();
    return values;
}

void OptionCommands::Open() {
    if (dialog_ == nullptr) {
        dialog_ = new frmOptionen(Current(), desk_.layer.DeviceNames(), &window_);
        dialog_->setAttribute(Qt::WA_DeleteOnClose);
        connect(dialog_, &frmOptionen::accepted, this, &OptionCommands::Confirm);
        connect(dialog_, &frmOptionen::LookChosen, this, &OptionCommands::LookChosen);
        connect(dialog_, &frmOptionen::ToneRequested, this, &OptionCommands::PlayTone);
    }
    dialog_->show();
    dialog_->raise();
    dialog_->activateWindow();
}

void OptionCommands::OpenPage(const QString& caption) {
    Open();
    dialog_->ShowPage(caption);
}

void OptionCommands::Confirm() {
    const OptionValues now = Current();
    OptionValues values = dialog_->Values();
    values.KeepChangesOnly(dialog_->OpenedValues(), now);
    values.Write(desk_.settings, chartsPath_);
    Apply(values);
    if (values.columns != now.columns)
        archive_.ReloadColumns();
    Q_EMIT Confirmed();
    const int device = values.output.Resolve(desk_.layer.DeviceNames());
    if (values.output == now.output || device == desk_.layer.OutputDevice())
        return;
    Q_EMIT OutputChosen(device);
    if (desk_.layer.OutputDevice() != device)
        now.output.Write(desk_.settings); // refused, and not to be heard of at the next start either
}

void OptionCommands::Apply(const OptionValues& values) {
    ApplyMixing(values);
    ApplyViews(values);
    Q_EMIT LookChosen(values.skin, values.fontSize, values.buttonSize);
}

void OptionCommands::ApplyViews(const OptionValues& values) {
    archive_.SetWheelRows(values.wheelRows);
    console_.SetMeters(OptionValues::MeterStyleOf(values.meterStyle), OptionValues::ColourOf(values.meterColour));
}

void OptionCommands::ApplyMixing(const OptionValues& values) {
    MixerOptions mixing = desk_.mixer.Options();
    mixing.mode = values.fadeMode;
    mixing.fadeInterval = values.fadeInterval;
    mixing.switchOver = values.switchOver;
    mixing.removePlayed = values.removePlayed;
    mixing.preload = values.preload;
    desk_.mixer.SetOptions(mixing);
    desk_.mixer.SetUseCuePoints(values.useCuePoints);
    emergency_.Choose(values.emergencyTitle, values.emergencyAtEnd);
    if (values.volume != console_.Mixing().Volume()) {
        desk_.mixer.SetMasterVolume(values.volume);
        console_.Mixing().SetVolume(values.volume);
    }
}

void OptionCommands::PlayTone(int device) {
    const TestTone::Result result = tone_.Play(device);
    if (dialog_ != nullptr)
        dialog_->ShowToneResult(TestTone::Text(result, device));
}

} // namespace kalvo
