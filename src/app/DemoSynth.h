#pragma once

#include <array>
#include <vector>

namespace kalvo {

/** A small piece of music: chords, bass, arpeggio and drums, made up from a few numbers. */
struct DemoTune {
    double tempo = 120; ///< beats per minute
    int key = 60;       ///< MIDI note of the key, 60 = middle C
    /** One chord a bar, over and over: semitones above the key; minor chords as the negative of 100 + semitones. */
    std::array<int, 4> chords{0, 7, -109, 5};
    int bars = 12; ///< of four beats
};

constexpr int kDemoSampleRate = 44100; ///< Hz

/** Seconds that a tune lasts. */
double DemoLength(const DemoTune& tune);

/** Interleaved stereo at kDemoSampleRate, highest peak 0.5 (-6 dBFS); begins and ends in silence, never clicks. */
std::vector<float> RenderDemoTune(const DemoTune& tune);

} // namespace kalvo
