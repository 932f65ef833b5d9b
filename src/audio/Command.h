#pragma once

#include "audio/AudioLibrary.h"

#include <cstdint>

namespace kalvo::audio {

class Reverb;
class Voice;

/** What the control thread tells the audio thread. Plain data. */
struct Command {
    enum class Kind : std::uint8_t {
        Add,       ///< the voice joins the bus
        Free,      ///< fades out, leaves and sets its Retired() flag
        Play,      ///< number: of this start
        Halt,      ///< fades out and keeps its place
        Set,       ///< frequency, volume, pan; the kKeep values leave one alone
        Slide,     ///< the same within `number` frames
        Gain,      ///< parameters: its gain
        Band,      ///< number: place of the equaliser band; parameters
        AddReverb, ///< reverb: given to the voice, which owns it already
        SetReverb, ///< parameters
        BusVolume  ///< volume
    };

    Kind kind = Kind::Add;
    Voice* voice = nullptr;
    std::uint64_t number = 0;
    std::uint32_t slide = 0; ///< number of this slide
    int frequency = kKeepFrequency;
    int volume = kKeepVolume;
    int pan = kKeepPan;
    EffectParameters parameters{};
    Reverb* reverb = nullptr;
};

} // namespace kalvo::audio
