#include "playlists/PlaylistActions.h"

#include "base/FileName.h"
#include "playlists/DisplayName.h"

#include <QDirIterator>
#include <QFileInfo>

#include <algorithm>

namespace kalvo {

namespace {

const auto warningCaption = QStringLiteral(" Achtung!");

PlaylistEntry EntryOf(const TitleRecord& title) {
    return {title.Titel, title.Interpret, title.Zeit, {}, title.Extra1, title.Pfad};
}

/** As a fresh entry of another list: without mark, with a key of its own. */
PlaylistEntry Moved(PlaylistEntry entry) {
    entry.shuffleKey.clear();
    entry.icon = EntryIcon::None;
    return entry;
}

void InsertOrAppend(Playlist& list, int row, const PlaylistEntry& entry) {
    if (row < 0)
        list.Append({entry});
    else
        list.Insert(row, {entry});
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

void AppendMusicBelow(const QString& folder, QStringList& files) {
    QStringList found;
    QDirIterator walk(folder, QDir::Files, QDirIterator::Subdirectories);
    while (walk.hasNext()) {
        const QString path = walk.next();
        if (FileName::IsMusic(path))
            found.append(path);
    }
    found.sort(Qt::CaseInsensitive);
    files += found;
}

QStringList MusicFiles(const QStringList& paths) {
    QStringList files;
    for (const QString& path : paths) {
        if (QFileInfo(path).isDir())
            AppendMusicBelow(path, files);
        else if (FileName::IsMusic(path))
            files.append(path);
    }
    return files;
}

} // namespace

PlaylistActions::PlaylistActions(Playlist& first, Playlist& second, PlaylistQuestions& questions, Exists exists)
    : first_(first), second_(second), questions_(questions), exists_(std::move(exists)) {}

void PlaylistActions::AddTitles(int number, const QList<TitleRecord>& titles, int row) {
    Playlist& list = List(number);
    for (const TitleRecord& title : titles) {
        if (!exists_(title.Pfad)) {
            questions_.Tell(QStringLiteral("Datei:\n") + title.Pfad + QStringLiteral("\nist nicht mehr vorhanden!"));
            continue;
        }
        if (!WantsDuplicate(list, title))
            continue;
        InsertOrAppend(list, row, EntryOf(title));
        if (row >= 0)
            ++row;
    }
}

void PlaylistActions::Distribute(const QList<TitleRecord>& titles) {
    QString toggle = QStringLiteral("2");
    for (const TitleRecord& title : titles) {
        if (!exists_(title.Pfad))
            continue;
        toggle = toggle == QLatin1String("2") ? QStringLiteral("1") : QStringLiteral("2");
        Playlist& list = List(toggle.toInt());
        if (WantsDuplicate(list, title))
            list.Append({EntryOf(title)});
    }
}

void PlaylistActions::MoveToList(int target, QList<int> rows) {
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
        List(number).Append({{title, artist, duration, {}, {}, path}});
}

void PlaylistActions::MarkPlayNext(const QList<int>& rows) {
    for (const int row : rows)
        List(active_).MarkPlayNext(row);
}

void PlaylistActions::UnmarkPlayNext(const QList<int>& rows) {
    for (const int row : rows)
        List(active_).UnmarkPlayNext(row);
}

void PlaylistActions::RemoveAll() {
    Playlist& list = List(active_);
    const QString question = QStringLiteral("Wollen Sie wirklich alle Titel der Wiedergabeliste löschen?");
    if (questions_.Ask(warningCaption, question) == QLatin1String("Ja"))
        list.Clear();
}

void PlaylistActions::DropEntries(int target, int row, const QList<DraggedEntry>& dragged, int source) {
    QList<int> rows = source == 0 ? QList<int>() : RowsNow(List(source), dragged);
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

int PlaylistActions::DropFiles(int target, int row, const QStringList& paths) {
    QList<PlaylistEntry> entries;
    const QStringList files = MusicFiles(paths);
    for (const QString& path : files) {
        entries.append(EntryFromFile(path));
        if (refine_)
            refine_(entries.back());
    }
    if (row < 0)
        List(target).Append(entries);
    else
        List(target).Insert(row, entries);
    return static_cast<int>(entries.size());
}

bool PlaylistActions::FileExists(const QString& path) {
    return QFileInfo(path).isFile();
}

bool PlaylistActions::WantsDuplicate(const Playlist& list, const TitleRecord& title) {
    if (list.FindPath(title.Pfad) < 0)
        return true;
    const QString text = QStringLiteral("Titel: ") + title.Interpret + QStringLiteral(" - ") + title.Titel +
                         QStringLiteral("\nbereits in Wiedergabeliste ") + QString::number(list.Number()) +
                         QStringLiteral(" vorhanden.\n") +
                         QStringLiteral("Soll der Titel trotzdem der Wiedergabeliste hinzugefügt werden?");
    return questions_.Ask(warningCaption, text) != QLatin1String("Nein");
}

} // namespace kalvo
