#pragma once

#include "audio/AudioTypes.h"
#include "playback/DeckTitles.h"

namespace kalvo {

/** A title that needs no disk when nothing else can be played. */
struct EmergencyTitle {
    DeckTitle title;
    audio::HeldFile file;   ///< null: there is none
    bool atListEnd = false; ///< plays when both lists are at their end, too

    bool IsThere() const { return file != nullptr; }
};

} // namespace kalvo
