#include "playlists/PlaylistActions.h"

#include <algorithm>
#include <array>

namespace kalvo {

namespace {

const auto warningCaption = QStringLiteral(" Achtung!");

/** As a fresh entry of another list: without mark, with a key of its own. */
PlaylistEntry Moved(PlaylistEntry entry) {
    entry.shuffleKey.clear();
    entry.icon = EntryIcon::None;
    return entry;
}

void InsertOrAppend(Playlist& list, int row, const QList<PlaylistEntry>& entries) {
    if (row < 0)
        list.Append(entries);
    else
        list.Insert(row, entries);
}

bool IsSameEntry(const PlaylistEntry& left, const PlaylistEntry& right) {
    return left.path == right.path && left.shuffleKey == right.shuffleKey && left.title == right.title;
}

/** Where the dragged entries are now, in their order; -1 for those that are gone. */
QList<int> RowsNow(const Playlist& list, const QList<DraggedEntry>& dragged) {
    QList<int> rows;
    QList<bool> taken(list.Count(), false);
    for (const DraggedEntry& one : dragged) {
        int row = one.row;
        const auto fits = [&](int candidate) {
            return candidate >= 0 && candidate < list.Count() && !taken.at(candidate) &&
                   IsSameEntry(list.At(candidate), one.entry);
        };
        if (!fits(row)) {
            row = 0;
            while (row < list.Count() && !fits(row))
                ++row;
        }
        const bool isThere = row < list.Count();
        if (isThere)
            taken[row] = true;
        rows.append(isThere ? row : -1);
    }
    return rows;
}

} // namespace

PlaylistEntry EntryOf(const TitleRecord& title) {
    return {title.Titel, title.Interpret, title.Zeit, {}, title.Extra1, title.Pfad};
}

/** A list that titles are added to: they are gathered, so that thousands are one change. */
struct PlaylistActions::Target {
    Target(Playlist& target, int before) : list(target), row(before) { TakePaths(); }

    void TakePaths() {
        for (const PlaylistEntry& entry : list.Entries())
            held.insert(entry.path);
    }
    void Add(const TitleRecord& title, EntryOrigin origin) {
        held.insert(title.Pfad);
        gathered.append(EntryOf(title));
        gathered.last().origin = origin;
    }
    void Flush() {
        InsertOrAppend(list, row, gathered);
        row = row < 0 ? row : row + static_cast<int>(gathered.size());
        gathered.clear();
    }

    Playlist& list;
    int row;
    QSet<QString> held;
    QList<PlaylistEntry> gathered;
};

PlaylistActions::PlaylistActions(Playlist& first, Playlist& second, PlaylistQuestions& questions)
    : first_(first), second_(second), questions_(questions), undo_(first, second) {}

void PlaylistActions::AddTitles(int number, const QList<TitleRecord>& titles, const QSet<QString>& missing, int row,
                                EntryOrigin origin) {
    const ListUndo::Step step(undo_, QStringLiteral("Titel hinzufügen"));
    Target target(List(number), row);
    for (const TitleRecord& title : titles) {
        const bool exists = !missing.contains(title.Pfad);
        if (!exists || target.held.contains(title.Pfad)) {
            target.Flush();
            const ListUndo::Pause pause(undo_);
            if (!exists)
                TellMissing(title.Pfad);
            if (!exists || !WantsDuplicate(target, title))
                continue;
        }
        target.Add(title, origin);
    }
    target.Flush();
}

void PlaylistActions::Distribute(const QList<TitleRecord>& titles, const QSet<QString>& missing) {
    const ListUndo::Step step(undo_, QStringLiteral("Titel verteilen"));
    std::array<Target, 2> targets{Target(first_, -1), Target(second_, -1)};
    std::size_t toggle = 1;
    for (const TitleRecord& title : titles) {
        if (missing.contains(title.Pfad))
            continue;
        toggle = 1 - toggle;
        Target& target = targets.at(toggle);
        if (target.held.contains(title.Pfad)) {
            targets[0].Flush();
            targets[1].Flush();
            const ListUndo::Pause pause(undo_);
            if (!WantsDuplicate(target, title))
                continue;
        }
        target.Add(title, EntryOrigin::Player);
    }
    targets[0].Flush();
    targets[1].Flush();
}

void PlaylistActions::MoveToList(int target, QList<int> rows) {
    const ListUndo::Step step(undo_, QStringLiteral("Titel verschieben"));
    Playlist& source = List(target == 1 ? 2 : 1);
    std::sort(rows.begin(), rows.end());
    rows.removeIf([&source](int row) { return row < 0 || row >= source.Count(); });
    QList<PlaylistEntry> entries;
    for (const int row : rows)
        entries.append(Moved(source.At(row)));
    List(target).Append(entries);
    source.Remove(rows);
}

void PlaylistActions::AddFromPlayer(int number, const QString& title, const QString& artist, const QString& duration,
                                    const QString& path) {
    if (!path.isEmpty())
        AddEntries(number, {{title, artist, duration, {}, {}, path}});
}

void PlaylistActions::AddEntries(int number, const QList<PlaylistEntry>& entries, int row) {
    const ListUndo::Step step(undo_, QStringLiteral("Titel hinzufügen"));
    InsertOrAppend(List(number), row, entries);
}

void PlaylistActions::MarkPlayNext(const QList<int>& rows) {
    const ListUndo::Step step(undo_, QStringLiteral("Als Nächstes"));
    for (const int row : rows)
        List(active_).MarkPlayNext(row);
}

void PlaylistActions::UnmarkPlayNext(const QList<int>& rows) {
    const ListUndo::Step step(undo_, QStringLiteral("Nicht als Nächstes"));
    for (const int row : rows)
        List(active_).UnmarkPlayNext(row);
}

bool PlaylistActions::SetCue(int number, quint64 entry, const QString& cue) {
    const int row = List(number).FindEntry(entry);
    if (row < 0)
        return false;
    const ListUndo::Step step(undo_,
                              cue.isEmpty() ? QStringLiteral("Cue-Punkt löschen") : QStringLiteral("Cue-Punkt setzen"));
    List(number).SetInfo(row, cue);
    return true;
}

void PlaylistActions::Shuffle() {
    const ListUndo::Step step(undo_, QStringLiteral("Shuffle"));
    List(active_).Shuffle();
}

void PlaylistActions::RemoveRows(int number, const QList<int>& rows) {
    const ListUndo::Step step(undo_, QStringLiteral("Titel löschen"));
    List(number).Remove(rows);
}

void PlaylistActions::MoveRows(int number, const QList<int>& rows, int target) {
    const ListUndo::Step step(undo_, QStringLiteral("Titel verschieben"));
    List(number).Move(rows, target);
}

bool PlaylistActions::RemoveAll() {
    Playlist& list = List(active_);
    const QString question = QStringLiteral("Wollen Sie wirklich alle Titel der Wiedergabeliste löschen?");
    if (questions_.Ask(warningCaption, question) != QLatin1String("Ja"))
        return false;
    const ListUndo::Step step(undo_, QStringLiteral("Alle Titel löschen"));
    list.Clear();
    return true;
}

void PlaylistActions::DropEntries(int target, int row, const QList<DraggedEntry>& dragged, int source) {
    const ListUndo::Step step(undo_, QStringLiteral("Titel verschieben"));
    const QList<int> rows = source == 0 ? QList<int>() : RowsNow(List(source), dragged);
    if (source == target) {
        List(target).Move(rows, row);
        return;
    }
    QList<PlaylistEntry> entries;
    for (qsizetype i = 0; i < dragged.size(); ++i) {
        if (source == 0 || rows.at(i) >= 0)
            entries.append(Moved(dragged.at(i).entry));
    }
    List(target).Insert(row, entries);
    if (source != 0)
        List(source).Remove(rows);
}

void PlaylistActions::TellMissing(const QString& path) {
    questions_.Tell(QStringLiteral("Datei:\n") + path + QStringLiteral("\nist nicht mehr vorhanden!"));
}

/** A title that is in the list already is asked about; the list goes on meanwhile. */
bool PlaylistActions::WantsDuplicate(Target& target, const TitleRecord& title) {
    const QString text = QStringLiteral("Titel: ") + title.Interpret + QStringLiteral(" - ") + title.Titel +
                         QStringLiteral("\nbereits in Wiedergabeliste ") + QString::number(target.list.Number()) +
                         QStringLiteral(" vorhanden.\n") +
                         QStringLiteral("Soll der Titel trotzdem der Wiedergabeliste hinzugefügt werden?");
    const bool isWanted = questions_.Ask(warningCaption, text) != QLatin1String("Nein");
    target.TakePaths();
    return isWanted;
}

} // namespace kalvo
