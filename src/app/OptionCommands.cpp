#include "app/OptionCommands.h"

#include "app/Desk.h"
#include "app/frmOptionen.h"
#include "archive/ui/ArchivePanel.h"
#include "playback/ui/MixerPanel.h"
#include "widgets/SkinStyle.h"
#include "widgets/xMessageBox.h"

#include <QAction>
#include <QMenu>

namespace kalvo {

OptionCommands::OptionCommands(Desk& desk, QMenu& settingsMenu, ArchivePanel& archive, MixerPanel& mixing,
                               QWidget& window)
    : QObject(&window),
      desk_(desk),
      archive_(archive),
      mixing_(mixing),
      window_(window),
      chartsPath_(desk.folder.Path(QStringLiteral("\\optionen.dll"))),
      tone_(desk.layer) {
    auto* open = new QAction(tr("&Optionen..."), this);
    open->setObjectName(QStringLiteral("Optionen"));
    open->setShortcut(Qt::CTRL | Qt::Key_Comma);
    open->setAutoRepeat(false);
    connect(open, &QAction::triggered, this, &OptionCommands::Open);
    settingsMenu.addSeparator();
    settingsMenu.addAction(open);
    const OptionValues values = Current();
    archive_.SetWheelRows(values.wheelRows);
    desk_.mixer.SetUseCuePoints(values.useCuePoints);
}

/** What the file holds; the menus change some of it that is written only when the program ends. */
OptionValues OptionCommands::Current() const {
    OptionValues values = OptionValues::Read(desk_.settings, chartsPath_, SkinStyle::Units().F());
    const MixerOptions& mixing = desk_.mixer.Options();
    values.fadeMode = mixing.mode;
    values.fadeInterval = mixing.fadeInterval;
    values.switchOver = mixing.switchOver;
    values.removePlayed = mixing.removePlayed;
    values.volume = mixing_.Volume();
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

void OptionCommands::Confirm() {
    const OptionValues now = Current();
    OptionValues values = dialog_->Values();
    values.KeepChangesOnly(dialog_->OpenedValues(), now);
    if (!values.Write(desk_.settings, chartsPath_)) {
        xMessageBox::Ask(&window_, tr(" Kalvo"), tr("Die Titelbegrenzung der Charts konnte nicht gespeichert werden."),
                         {tr("OK")}, xMessageBox::Sign::Warning);
    }
    Apply(values);
    if (values.columns != now.columns)
        archive_.ReloadColumns();
    const int device = values.output.Resolve(desk_.layer.DeviceNames());
    if (values.output != now.output && device != desk_.layer.OutputDevice())
        Q_EMIT OutputChosen(device);
}

void OptionCommands::Apply(const OptionValues& values) {
    ApplyMixing(values);
    archive_.SetWheelRows(values.wheelRows);
    Q_EMIT LookChosen(values.skin, values.fontSize, values.buttonSize);
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
    if (values.volume != mixing_.Volume()) {
        desk_.mixer.SetMasterVolume(values.volume);
        mixing_.SetVolume(values.volume);
    }
}

void OptionCommands::PlayTone(int device) {
    const TestTone::Result result = tone_.Play(device);
    if (dialog_ != nullptr)
        dialog_->ShowToneResult(TestTone::Text(result, device));
}

} // namespace kalvo
