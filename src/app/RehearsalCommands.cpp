#include "app/RehearsalCommands.h"

#include "app/Desk.h"
#include "app/DeskActions.h"
#include "app/MeasureCommands.h"
#include "app/OptionCommands.h"
#include "playback/AudioModule.h"
#include "playback/ui/frmProbelauf.h"

#include <QAction>
#include <QCoreApplication>

namespace kalvo {

namespace {

using namespace Qt::StringLiterals;

/** Apart from the one that the desk plays with. */
std::unique_ptr<audio::AudioLibrary> OwnLibrary() {
    return AudioModule(QCoreApplication::applicationDirPath()).Create();
}

} // namespace

RehearsalCommands::RehearsalCommands(Desk& desk, DeskActions& actions, MeasureCommands& measures,
                                     OptionCommands& options, QWidget& window)
    : QObject(&window),
      desk_(desk),
      measures_(measures),
      window_(window),
      rehearsal_({[this] { return Moment(); }, [this] { return Settings(); }, &OwnLibrary}) {
    auto* open = new QAction(u"&Probelauf..."_s, this);
    open->setObjectName(u"Probelauf"_s);
    open->setAutoRepeat(false);
    connect(open, &QAction::triggered, this, &RehearsalCommands::Open);
    actions.mixerMenu->addAction(open);
    for (const int player : {1, 2}) {
        connect(&desk_.List(player), &Playlist::Changed, &rehearsal_, &Rehearsal::Refresh);
        connect(&desk_.List(player), &Playlist::CurrentChanged, &rehearsal_, &Rehearsal::Refresh);
    }
    connect(&desk_.mixer, &Mixer::PlayerChanged, &rehearsal_, &Rehearsal::Refresh);
    connect(&desk_.mixer, &Mixer::OptionsChanged, &rehearsal_, &Rehearsal::Refresh);
    connect(&options, &OptionCommands::Confirmed, &rehearsal_, &Rehearsal::Refresh);
    connect(&measures_.Measurer(), &TitleMeasurer::Measured, this, [this] {
        if (dialog_)
            dialog_->RenewTempo();
    });
}

RehearsalCommands::~RehearsalCommands() {
    delete dialog_.data();
}

void RehearsalCommands::Open() {
    if (!dialog_) {
        dialog_ = new frmProbelauf({rehearsal_, desk_.mixer, desk_.settings, desk_.clock,
                                    [this](const QString& path) { return TempoOf(path); }},
                                   &window_);
        dialog_->setAttribute(Qt::WA_DeleteOnClose);
        connect(dialog_, &frmProbelauf::JointChosen, this, &RehearsalCommands::Measure);
        rehearsal_.Start();
    }
    dialog_->show();
    dialog_->raise();
    dialog_->activateWindow();
}

DeskMoment RehearsalCommands::Moment() const {
    return DeskMoment::Of(desk_.mixer, desk_.list1, desk_.list2);
}

RehearsalSettings RehearsalCommands::Settings() const {
    RehearsalSettings settings;
    settings.mixing = desk_.mixer.Options();
    settings.useCuePoints = desk_.settings.GetSwitch(u"Mixer"_s, u"CuePunkte"_s, true);
    settings.equaliser = desk_.layer.Equaliser();
    for (const Playlist* list : {&desk_.list1, &desk_.list2}) {
        for (const PlaylistEntry& entry : list->Entries()) {
            if (const double gain = measures_.GainOf(entry.path); gain != 0)
                settings.gains.insert(entry.path, gain);
        }
    }
    return settings;
}

/** As measured, else as the archive has it. */
double RehearsalCommands::TempoOf(const QString& path) const {
    if (const auto known = measures_.Measurer().Known(path); known && known->tempo > 0)
        return known->tempo;
    const std::optional<TitleRecord> title = desk_.archive.FindByPath(path);
    return title ? title->Extra4.toDouble() : 0;
}

void RehearsalCommands::Measure(const QStringList& paths) {
    for (const QString& path : paths) {
        if (TempoOf(path) <= 0)
            measures_.Measurer().Request(path);
    }
}

} // namespace kalvo
