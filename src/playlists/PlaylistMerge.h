#pragma once

#include "playlists/Playlist.h"

namespace kalvo {

/**
 * What undo makes of a list that went on after the step that is taken back. wanted: the state to return to; known: the
 * state that the step had left; now: the present one. What has changed from `known` to `now` was done by the player or
 * a helper and stays: entries that were taken away do not come back, entries that were added are kept behind their
 * neighbour, the red entry and the icons are the present ones.
 */
PlaylistState MergedState(const PlaylistState& wanted, const PlaylistState& known, const PlaylistState& now);

} // namespace kalvo
