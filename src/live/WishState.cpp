#include "live/WishState.h"

#include "playlists/Playlist.h"

namespace kalvo {

WishState::WishState(const Playlist& first, const Playlist& second) {
    for (const Stage stage : {Stage::Played, Stage::Coming, Stage::OnPlayer}) { // the later ones win
        Take(second, stage);
        Take(first, stage);
    }
}

QString WishState::Of(const Wish& wish) const {
    const auto known = states_.constFind(wish.path);
    return known != states_.cend() ? *known : cutStates_.value(wish.path);
}

void WishState::Take(const Playlist& list, Stage stage) {
    const QString texts[] = {QStringLiteral("gespielt"), QStringLiteral("in Liste %1").arg(list.Number()),
                             QStringLiteral("auf Player %1").arg(list.Number())};
    for (int row = 0; row < list.Count(); ++row) {
        const PlaylistEntry& entry = list.At(row);
        const Stage itsStage = row == list.CurrentRow()          ? Stage::OnPlayer
                               : entry.icon == EntryIcon::Played ? Stage::Played
                                                                 : Stage::Coming;
        if (itsStage != stage)
            continue;
        const QString& text = texts[static_cast<std::size_t>(stage)];
        states_.insert(entry.path, text);
        if (WishFile::MayBeCut(entry.path))
            cutStates_.insert(WishFile::StoredPath(entry.path), text);
    }
}

} // namespace kalvo
