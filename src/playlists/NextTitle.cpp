#include "playlists/NextTitle.h"

namespace kalvo {

namespace {

using Exists = std::function<bool(const QString& path)>;

/** First row from `row` on with a play-next mark, leaving `except` out; -1 when there is none. */
int NextMarked(const Playlist& list, int row, int except = -1) {
    for (; row < list.Count(); ++row) {
        if (row != except && list.At(row).icon == EntryIcon::PlayNext)
            return row;
    }
    return -1;
}

/** First row from `row` on whose file is there, leaving `except` out; the count when there is none. */
int NextExisting(const Playlist& list, int row, const Exists& exists, int except = -1) {
    while (row < list.Count() && (row == except || !exists(list.At(row).path)))
        ++row;
    return row;
}

bool IsRemoved(const Playlist& list, bool removePlayed) {
    return removePlayed && list.CurrentRow() >= 0 && !list.IsPassedOver();
}

} // namespace

int TakeNextTitle(Playlist& list, bool removePlayed, const Exists& exists) {
    int row = list.CurrentRow() + 1;
    if (IsRemoved(list, removePlayed)) {
        --row;
        list.Remove({row});
    }
    for (int marked = NextMarked(list, 0); marked >= 0; marked = NextMarked(list, marked)) {
        if (exists(list.At(marked).path))
            return marked;
        list.PassOver(marked);
        row = marked + 1;
    }
    const int found = NextExisting(list, row, exists);
    if (found > row)
        list.PassOver(found - 1);
    return found < list.Count() ? found : -1;
}

int PeekNextTitle(const Playlist& list, const Exists& exists, bool removePlayed) {
    const int removed = IsRemoved(list, removePlayed) ? list.CurrentRow() : -1;
    int row = list.CurrentRow() + 1;
    for (int marked = NextMarked(list, 0, removed); marked >= 0; marked = NextMarked(list, marked + 1, removed)) {
        if (exists(list.At(marked).path))
            return marked;
        row = marked + 1;
    }
    const int found = NextExisting(list, row, exists, removed);
    return found < list.Count() ? found : -1;
}

} // namespace kalvo
