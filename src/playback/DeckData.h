#pragma once

#include "playback/DeckTitles.h"

namespace kalvo {

class Mixer;
class Playlist;

/** What the mixer knows of one player besides its stream. */
struct DeckData {
    Mixer* owner = nullptr;
    int number = 0;
    Playlist* list = nullptr;
    DeckTitle title;
    bool muted = false;
    bool stoppedByUser = false;
    bool asked = false;     ///< the title on it was started by the user, not by the rule
    int openingRounds = 0;  ///< since its file has been opening
    bool prepareDue = true; ///< the list has changed since the next title was looked up
    bool preparing = false; ///< the next title's file has not been seen open yet
    int preparedRow = -1;
    int limit = 100;        ///< volume, for LimitVolume
    QString listenedStatus; ///< of a listened title that plays
};

} // namespace kalvo
