#include "live/WishState.h"

#include "playlists/Playlist.h"

namespace kalvo {

WishState::WishState(const Playlist& first, const Playlist& second) {
    Take(second);
    Take(first); // what list 1 says wins
}

QString WishState::Of(const Wish& wish) const {
    const auto known = states_.constFind(wish.path);
    return known != states_.cend() ? *known : cutStates_.value(wish.path);
}

void WishState::Take(const Playlist& list) {
    for (int row = 0; row < list.Count(); ++row) {
        const PlaylistEntry& entry = list.At(row);
        const QString state = row == list.CurrentRow()          ? QStringLiteral("auf Player %1").arg(list.Number())
                              : entry.icon == EntryIcon::Played ? QStringLiteral("gespielt")
                                                                : QStringLiteral("in Liste %1").arg(list.Number());
        states_.insert(entry.path, state);
        if (WishFile::MayBeCut(entry.path))
            cutStates_.insert(WishFile::StoredPath(entry.path), state);
    }
}

} // namespace kalvo
