#include "playlists/PlaylistFileActions.h"

#include "base/AtomicFile.h"
#include "base/FileName.h"
#include "playlists/ListCaption.h"
#include "playlists/M3uReader.h"
#include "playlists/PlaylistFile.h"

namespace kalvo {

namespace {

const auto appendCaption = QStringLiteral("Anhängen");
const auto noPlaylist = QStringLiteral("Keine gültige m3u Datei!");

} // namespace

PlaylistFileActions::PlaylistFileActions(PlaylistActions& lists, PlaylistIntake& intake, RecentFiles& recent,
                                         const Clock& clock)
    : lists_(lists), intake_(intake), recent_(recent), clock_(clock) {}

void PlaylistFileActions::Open(const QString& path) {
    PlaylistFile::Lists read;
    const PlaylistFile::Result result = PlaylistFile(path, clock_).Load(read);
    if (result.outcome == PlaylistFile::Outcome::Failed) {
        lists_.Questions().Tell(result.message);
        if (read[0].isEmpty() && read[1].isEmpty()) {
            recent_.Remove(path);
            return;
        }
    }
    const QString name = PlaylistName(path);
    bool append = true;
    if (!lists_.List(1).IsEmpty() || !lists_.List(2).IsEmpty()) {
        append = lists_.Questions().Confirm(
            appendCaption, QStringLiteral("Die Titel der zu öffnenden Wiedergabeliste:\n") + name +
                               QStringLiteral("\nkönnen an die vorhandene Wiedergabeliste angehängt werden.\n"
                                              "Möchten Sie die Titel anhängen?"));
    }
    const ListUndo::Step step(lists_.Undo(), QStringLiteral("Wiedergabeliste öffnen"));
    lists_.Undo().SetName(name);
    for (const int number : {1, 2}) {
        const QList<PlaylistEntry>& entries = read.at(static_cast<std::size_t>(number - 1));
        if (append)
            lists_.List(number).Append(entries);
        else
            lists_.List(number).Replace(entries);
    }
    recent_.Add(path);
}

void PlaylistFileActions::Save(const QString& path) {
    PlaylistFile file(path, clock_);
    const QString name = PlaylistName(path);
    const bool append =
        file.Exists() &&
        lists_.Questions().Confirm(
            appendCaption,
            QStringLiteral("Die Titel dieser Wiedergabeliste können an die zu speichernde Wiedergabeliste:\n") + name +
                QStringLiteral("\nangehängt werden.\nMöchten Sie die Titel anhängen?"));
    PlaylistFile::Lists kept;
    PlaylistFile::Result result;
    if (append)
        result = file.Load(kept);
    if (result.outcome != PlaylistFile::Outcome::Failed) {
        result = file.Save({lists_.List(1).Entries(), lists_.List(2).Entries()},
                           append ? PlaylistFile::Content::Append : PlaylistFile::Content::Replace);
    }
    if (!result.message.isEmpty())
        lists_.Questions().Tell(result.message);
    if (result.outcome == PlaylistFile::Outcome::Failed)
        return;
    lists_.Undo().SetName(name);
    const ListUndo::Step step(lists_.Undo(), QStringLiteral("Wiedergabeliste speichern"));
    // What the file held comes before what the lists hold, and these keep their marks.
    lists_.List(1).Insert(0, kept[0]);
    lists_.List(2).Insert(0, kept[1]);
    recent_.Add(path);
}

void PlaylistFileActions::Import(int number, const QString& path) {
    if (IsM3uName(path))
        Take(number, {path});
    else
        lists_.Questions().Tell(noPlaylist);
}

void PlaylistFileActions::Take(int number, const QStringList& paths, int row) {
    QStringList files;
    for (const QString& path : paths) {
        if (path.endsWith(QLatin1String(".wil"), Qt::CaseInsensitive))
            Open(path);
        else
            files.append(path);
    }
    if (files.isEmpty())
        return;
    intake_.AddFiles(number, files, row, [this](const GatheredFiles& gathered) {
        for (const QString& path : gathered.unusable) {
            lists_.Questions().Tell(noPlaylist);
            recent_.Remove(path);
        }
        for (const QString& path : gathered.playlists)
            recent_.Add(path);
    });
}

void PlaylistFileActions::Export(const QString& path, const TitleLength& length) {
    const QList<PlaylistEntry> entries = lists_.List(lists_.ActiveList()).Entries();
    const bool utf8 = path.endsWith(QLatin1String(".m3u8"), Qt::CaseInsensitive);
    const QByteArray bytes = WriteM3u(entries, length, utf8);
    if (bytes.isEmpty())
        return;
    if (WriteAtomically(path, bytes))
        recent_.Add(path);
    else
        lists_.Questions().Tell(
            QStringLiteral("Die Datei „%1“ konnte nicht geschrieben werden.").arg(FileName::Last(path)));
}

} // namespace kalvo
