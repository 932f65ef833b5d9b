#include "app/ChartsCommands.h"

#include "app/Desk.h"
#include "app/DeskActions.h"
#include "archive/ArchiveStatements.h"
#include "archive/ui/ArchivePanel.h"
#include "playlists/PlaylistActions.h"
#include "playlists/PlaylistIntake.h"
#include "playlists/ui/frmCharts.h"
#include "playlists/ui/frmVerlauf.h"
#include "playlists/ui/frmZuletztCount.h"

#include <QTimer>

#include <algorithm>
#include <vector>

namespace kalvo {

namespace {

/** The window, made when it is not there, in front. */
template<typename Window, typename Make>
Window* Show(QPointer<Window>& window, Make make) {
    if (!window) {
        window = make();
        window->setAttribute(Qt::WA_DeleteOnClose);
    }
    window->show();
    window->raise();
    window->activateWindow();
    return window;
}

} // namespace

ChartsCommands::ChartsCommands(const Parts& parts) : QObject(&parts.window), parts_(parts) {
    QMenu& tools = *parts_.actions.toolsMenu;
    tools.addAction(Add(QStringLiteral("MeineCharts"), QStringLiteral("&Charts..."), &ChartsCommands::MeineCharts));
    tools.addAction(Add(QStringLiteral("VerlaufDesAbends"), QStringLiteral("Verlauf des A&bends..."),
                        &ChartsCommands::VerlaufDesAbends));
    QMenu& archive = *parts_.actions.archiveMenu;
    archive.addSeparator();
    archive.addAction(Add(QStringLiteral("ZuletztGespieltAnzahl"), QStringLiteral("&Zuletzt gespielte Titel..."),
                          &ChartsCommands::ZuletztGespieltAnzahl));
    archive.addAction(Add(QStringLiteral("ZuletztGespieltLoeschen"), QStringLiteral("Zuletzt gespielt l&öschen..."),
                          &ChartsCommands::ZuletztGespieltLoeschen));
    connect(&parts_.desk.counter, &PlayCounter::Counted, this, &ChartsCommands::TakePlay);
    connect(&parts_.desk.counter, &PlayCounter::Ended, this, &ChartsCommands::ReloadHistory);
    QTimer::singleShot(0, this, [this] { parts_.desk.charts.Prepare(); });
}

QAction* ChartsCommands::Add(const QString& name, const QString& text, void (ChartsCommands::*act)()) {
    auto* action = new QAction(text, this);
    action->setObjectName(name);
    connect(action, &QAction::triggered, this, act);
    return action;
}

void ChartsCommands::MeineCharts() {
    Show(charts_, [this] {
        const int limit = ReadChartsLimit(parts_.desk.folder.Path(QStringLiteral("\\optionen.dll")));
        auto* window =
            new frmCharts(parts_.desk.charts, limit, parts_.lists.Questions(), parts_.desk.clock, &parts_.window);
        connect(window, &frmCharts::TitlesWanted, this, &ChartsCommands::Send);
        return window;
    });
}

void ChartsCommands::VerlaufDesAbends() {
    Show(history_, [this] { return new frmVerlauf(parts_.desk.evening, parts_.lists.Questions(), &parts_.window); });
}

void ChartsCommands::ZuletztGespieltAnzahl() {
    Show(counts_, [this] { return new frmZuletztCount(&parts_.window); });
    ShowCounts();
}

void ChartsCommands::ZuletztGespieltLoeschen() {
    const LastPlayedCounts counts = CountLastPlayed(parts_.desk.archive.CountStamps(), parts_.desk.clock.Now().date());
    const qint64 stamped = counts.Total() - counts.never;
    if (stamped == 0)
        return parts_.lists.Questions().Tell(
            QStringLiteral("Bei keinem Titel des Musikarchivs steht, wann er zuletzt gespielt wurde."));
    const QString question =
        stamped == 1
            ? QStringLiteral(
                  "Wollen Sie wirklich bei 1 Titel des Musikarchivs löschen, wann er zuletzt gespielt wurde?")
            : QStringLiteral(
                  "Wollen Sie wirklich bei %1 Titeln des Musikarchivs löschen, wann sie zuletzt gespielt wurden?")
                  .arg(stamped);
    if (!parts_.lists.Questions().Confirm(QStringLiteral(" Achtung!"), question))
        return;
    if (const WriteResult cleared = parts_.desk.archive.ClearStamps(); !cleared)
        parts_.lists.Questions().Tell(cleared.reason);
    parts_.archive.Refresh();
    ShowCounts();
}

void ChartsCommands::Send(int player, const QList<ChartEntry>& titles) {
    QList<TitleRecord> records;
    for (const ChartEntry& title : titles) {
        TitleRecord plain;
        plain.Titel = title.title;
        plain.Interpret = title.artist;
        plain.Pfad = title.path;
        const std::optional<TitleRecord> known = parts_.desk.archive.FindByPath(title.path);
        records.append(known ? *known : FindCut(title).value_or(plain));
    }
    if (player == 0)
        parts_.intake.Distribute(records);
    else
        parts_.intake.AddTitles(player, records);
}

/** The archive's title whose path was too long for the charts' field. */
std::optional<TitleRecord> ChartsCommands::FindCut(const ChartEntry& entry) const {
    if (!ChartsFile::MayBeCut(entry))
        return std::nullopt;
    const Archive& archive = parts_.desk.archive;
    const std::vector<qint64> numbers = archive.Select(ArchiveStatements::DuplicateCheck(entry.path + u'*'));
    const QList<TitleRecord> titles = archive.Read(QList<qint64>(numbers.begin(), numbers.end()));
    const auto found = std::find_if(titles.begin(), titles.end(), [&entry](const TitleRecord& title) {
        return ChartsFile::IsRecordOf(entry, title.Pfad, title.Titel);
    });
    return found == titles.end() ? std::nullopt : std::optional(*found);
}

void ChartsCommands::ShowCounts() {
    if (counts_)
        counts_->Show(CountLastPlayed(parts_.desk.archive.CountStamps(), parts_.desk.clock.Now().date()));
}

void ChartsCommands::TakePlay(const PlayedTitle& title) {
    if (charts_)
        charts_->TakePlay(title.path, title.title);
    ReloadHistory();
    ShowCounts();
}

void ChartsCommands::ReloadHistory() {
    if (history_)
        history_->Reload();
}

} // namespace kalvo
