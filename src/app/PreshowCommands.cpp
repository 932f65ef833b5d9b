#include "app/PreshowCommands.h"

#include "app/AutoDjCommands.h"
#include "app/Desk.h"
#include "app/DeskActions.h"
#include "app/ListBand.h"
#include "app/MeasureCommands.h"
#include "app/OptionCommands.h"
#include "live/JingleFile.h"
#include "live/SampleFile.h"
#include "live/ui/frmVorpruefung.h"
#include "playback/RecordingOptions.h"
#include "playlists/ui/PlaylistPanel.h"

#include <QAction>

namespace kalvo {

namespace {

using namespace Qt::StringLiterals;

/** From the red entry on, and whatever else has not been played. */
QList<PreshowEntry> StillToPlay(const Playlist& list) {
    QList<PreshowEntry> coming;
    for (int row = 0; row < list.Count(); ++row) {
        if (row >= list.CurrentRow() || list.At(row).icon == EntryIcon::PlayNext)
            coming.append({row, list.At(row)});
    }
    return coming;
}

} // namespace

PreshowCommands::PreshowCommands(const Parts& parts)
    : QObject(&parts.window),
      parts_(parts),
      inspector_(parts.desk.folder.Path(u"\\Vorpruefung.db"_s), parts.desk.clock),
      check_([this] { return Facts(); }, inspector_) {
    auto* open = new QAction(u"&Vorprüfung..."_s, this);
    open->setObjectName(u"Vorpruefung"_s);
    open->setAutoRepeat(false);
    connect(open, &QAction::triggered, this, &PreshowCommands::Open);
    parts_.actions.mixerMenu->addSeparator();
    parts_.actions.mixerMenu->addAction(open);
    for (const int player : {1, 2}) {
        connect(&parts_.desk.List(player), &Playlist::Changed, &check_, &PreshowCheck::Refresh);
        connect(&parts_.desk.List(player), &Playlist::CurrentChanged, &check_, &PreshowCheck::Refresh);
    }
    connect(&parts_.desk.mixer, &Mixer::OptionsChanged, &check_, &PreshowCheck::Refresh);
    connect(&parts_.desk.mixer, &Mixer::OutputChanged, this, [this](const OutputNews& news) {
        outputLost_ = news.IsTrouble();
        check_.Refresh();
    });
    connect(&check_, &PreshowCheck::Starting, this, &PreshowCommands::LookForCards);
    connect(&parts_.options, &OptionCommands::Confirmed, this, [this] {
        if (page_)
            LookForCards();
        check_.Refresh();
    });
    connect(&inspector_, &TitleInspector::Inspected, this, [this](const QString& path, const InspectedTitle& title) {
        if (title.found.decoded > 0)
            parts_.measures.Measurer().Learn(path, {title.stamp, title.found.measures});
    });
}

PreshowCommands::~PreshowCommands() {
    delete page_.data();
}

void PreshowCommands::Open() {
    if (!page_) {
        page_ = new frmVorpruefung(check_, parts_.desk.clock, &parts_.window);
        page_->setAttribute(Qt::WA_DeleteOnClose);
        connect(page_, &frmVorpruefung::TargetChosen, this, &PreshowCommands::Follow);
        check_.Start();
    }
    page_->show();
    page_->raise();
    page_->activateWindow();
}

// ---- what is judged

/** Only when the user acts: the sound system may take long, and is not to be asked while cards come and go. */
void PreshowCommands::LookForCards() {
    cards_ = parts_.desk.layer.DeviceNames();
    outputLost_ = false;
}

PreshowFacts PreshowCommands::Facts() const {
    Desk& desk = parts_.desk;
    PreshowFacts facts;
    facts.lists = {StillToPlay(desk.list1), StillToPlay(desk.list2)};
    facts.mixing = desk.mixer.Options();
    facts.levelling = parts_.measures.IsLevelling();
    AddSound(facts);
    AddToolFiles(facts);
    const RecordingOptions recording = RecordingOptions::Read(desk.settings, desk.folder.Path(u"\\Mitschnitte"_s));
    facts.recordingFolder = recording.folder;
    facts.recordingRate = RecordingFormatOf(recording.format).bytesPerSecond;
    facts.dataFolder = desk.folder.Path({});
    if (!desk.archive.IsLoading())
        facts.refillTitles = parts_.autoDj.RefillTitles(Preshow::kEnoughToRefill);
    return facts;
}

void PreshowCommands::AddSound(PreshowFacts& facts) const {
    Desk& desk = parts_.desk;
    facts.devices = cards_;
    facts.main = OutputChoice::Read(desk.settings);
    facts.headphones = OutputChoice::Read(desk.settings, audio::Output::Headphones);
    facts.outputOpen = desk.layer.Audio().GetInfo(audio::Output::Main, facts.output);
    const QString playing = QString::fromStdString(facts.output.deviceName);
    const auto chosen = facts.devices.indexOf(facts.main.name);
    if (outputLost_ && chosen > audio::kDefaultDevice && playing != facts.main.name)
        facts.devices[chosen].clear();
    if (!playing.isEmpty() && !facts.devices.contains(playing)) // it has come back
        facts.devices.append(playing);
    facts.emergencyTitle = desk.settings.GetSetting(u"Mixer"_s, u"Notfalltitel"_s, {});
}

void PreshowCommands::AddToolFiles(PreshowFacts& facts) const {
    Desk& desk = parts_.desk;
    JingleFile jingles(desk.folder.Path(u"\\TerminPlayNeu.dll"_s), desk.settings, desk.clock);
    for (const JingleRecord& record : jingles.Read()) {
        if (!record.IsEmpty() && record.active)
            facts.files.append({u"Termin-Play, %1"_s.arg(record.TimesText()),
                                record.path,
                                {PreshowTarget::Place::Schedule, 0, 0, {}}});
    }
    const SampleSlots pads = SampleFile(desk.folder.Path(u"\\sample.dll"_s), desk.clock).Read();
    for (std::size_t pad = 0; pad < pads.size(); ++pad) {
        if (!pads.at(pad).path.isEmpty())
            facts.files.append(
                {u"Sampler, Taste %1"_s.arg(pad + 1), pads.at(pad).path, {PreshowTarget::Place::Sampler, 0, 0, {}}});
    }
}

// ---- where its lines lead

void PreshowCommands::Follow(const PreshowTarget& target) {
    using Place = PreshowTarget::Place;
    switch (target.place) {
    case Place::None:
        break;
    case Place::Entry:
        ShowEntry(target.list, target.entry);
        break;
    case Place::Options:
        parts_.options.OpenPage(target.page);
        break;
    case Place::Schedule:
        Trigger("TerminPlay");
        break;
    case Place::Sampler:
        Trigger("SamplerEinstellungen");
        break;
    case Place::Recording:
        Trigger("Mitschnitt");
        break;
    case Place::AutoDj:
        Trigger("AutoDj");
        break;
    }
}

void PreshowCommands::ShowEntry(int list, quint64 entry) {
    const int row = parts_.desk.List(list).FindEntry(entry);
    if (row < 0)
        return; // played and removed meanwhile
    PlaylistView& view = parts_.lists.Panel(list).View();
    view.selectRow(row);
    view.scrollTo(view.model()->index(row, 0));
    parts_.window.activateWindow();
    view.setFocus(Qt::OtherFocusReason);
}

void PreshowCommands::Trigger(const char* action) {
    if (auto* found = parts_.window.findChild<QAction*>(QLatin1String(action)))
        found->trigger();
}

} // namespace kalvo
