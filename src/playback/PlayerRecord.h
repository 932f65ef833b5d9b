#pragma once

#include "audio/AudioLibrary.h"

#include <QString>

#include <array>

namespace kalvo {

constexpr int kEqualiserBands = 10;
/** Centre frequencies of the equaliser's bands in Hz; also the names of their settings. */
constexpr std::array<int, kEqualiserBands> kBandFrequencies{80, 125, 250, 500, 1000, 2000, 4000, 8000, 12000, 16000};

/** What a player's play state tells the play statistics. */
enum class PlayState : unsigned char {
    Empty = 0,   ///< nothing loaded, or loaded and not yet counted
    Counted = 1, ///< loaded and counted
    Listened = 2 ///< loaded, but played by pre-listening
};

/** Of a title's own rate. pitch: tenths of a percent off it. */
constexpr double PitchRatio(int pitch) {
    return 1 + pitch / 1000.0;
}

/** What one player owns in the audio library. UI thread. */
struct PlayerRecord {
    audio::Handle stream = 0;
    bool opening = false; ///< the stream's file is not open yet
    PlayState state = PlayState::Empty;
    int pitch = 0;     ///< tenths of a percent off the title's own rate, -120..120
    int pitchFreq = 0; ///< playback sample rate in Hz that follows from it; 0 = nothing loaded
    std::array<audio::Handle, kEqualiserBands + 1> eqFx{}; ///< ten bands and the reverb; 0 = no effect

    audio::Handle prepared = 0; ///< stream opened ahead
    QString preparedPath;       ///< its file
};

} // namespace kalvo
