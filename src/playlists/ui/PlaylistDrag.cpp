#include "playlists/ui/PlaylistDrag.h"

#include "archive/TitleRow.h"
#include "widgets/DragTypes.h"

#include <QMimeData>
#include <QUrl>

namespace kalvo::PlaylistDrag {

namespace {

enum Place { Source, Row, Title, Artist, Duration, ShuffleKey, Info, Path, Origin, PlaceCount };

/** An unknown one, from another version of the program, is the player's. */
EntryOrigin OriginOf(const QString& number) {
    const int origin = number.toInt();
    return origin > 0 && origin <= static_cast<int>(EntryOrigin::Automatic) ? static_cast<EntryOrigin>(origin)
                                                                            : EntryOrigin::Player;
}

} // namespace

std::unique_ptr<QMimeData> Pack(const Playlist& list, const QList<int>& rows) {
    DragTypes::Rows packed;
    for (const int row : rows) {
        const PlaylistEntry& entry = list.At(row);
        packed.append({QString::number(list.Number()), QString::number(row), entry.title, entry.artist, entry.duration,
                       entry.shuffleKey, entry.info, entry.path, QString::number(static_cast<int>(entry.origin))});
    }
    auto data = std::make_unique<QMimeData>();
    DragTypes::Put(*data, DragTypes::PlaylistEntries(), packed);
    return data;
}

std::optional<Entries> TakeEntries(const QMimeData* data) {
    const std::optional<DragTypes::Rows> rows = DragTypes::Take(data, DragTypes::PlaylistEntries());
    if (!rows)
        return std::nullopt;
    Entries entries;
    for (const QStringList& row : *rows) {
        if (row.size() != PlaceCount)
            return std::nullopt;
        entries.source = row.at(Source).toInt();
        PlaylistEntry entry{row.at(Title),      row.at(Artist), row.at(Duration),
                            row.at(ShuffleKey), row.at(Info),   row.at(Path)};
        entry.origin = OriginOf(row.at(Origin));
        entries.dragged.append({entry, row.at(Row).toInt()});
    }
    return entries;
}

std::optional<QList<TitleRecord>> TakeTitles(const QMimeData* data) {
    const std::optional<DragTypes::Rows> rows = DragTypes::Take(data, DragTypes::ArchiveTitles());
    if (!rows)
        return std::nullopt;
    QList<TitleRecord> titles;
    for (const QStringList& row : *rows)
        titles.append(TitleRow::Unpack(row));
    return titles;
}

QStringList TakePaths(const QMimeData* data) {
    QStringList paths;
    const QList<QUrl> urls = data->urls();
    for (const QUrl& url : urls) {
        if (url.isLocalFile())
            paths.append(url.toLocalFile());
    }
    return paths;
}

bool IsWelcome(const QMimeData* data) {
    return data->hasFormat(DragTypes::PlaylistEntries()) || data->hasFormat(DragTypes::ArchiveTitles()) ||
           data->hasUrls();
}

} // namespace kalvo::PlaylistDrag
