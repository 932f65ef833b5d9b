#pragma once

#include "playback/Mixer.h"

namespace kalvo::test {

/** What a night was like. */
struct NightReport {
    double seconds = 0; ///< of sound
    int titles = 0;     ///< started
    int acts = 0;       ///< of the user
    int rescues = 0;    ///< starts of the emergency title
    double longestSilence = 0;
    double largestBend = 0;      ///< of the sound's curve: a jump or kink shows as its height, 0..2
    QStringList faults;          ///< each silence and bend beyond the limits: when it was and what went before
    std::size_t memoryEarly = 0; ///< resident bytes with empty lists and players, after a quarter of the night
    std::size_t memoryLate = 0;  ///< the same at its end
};

/**
 * A night at the desk in its own time: the real players, lists, fader and mixer on the real audio library, with titles
 * from half a second to ten minutes, a user who does whatever comes to his mind, files that are missing, broken or
 * vanish, and a disk that is pulled out now and then.
 *
 * What silences the music by the user's own will (stop, pause, mute, fader, continuous play off) he mends within three
 * seconds; until then silence is his. All other silence counts. Titles are low tones that swell and fade, so that a
 * click of the desk's own stands out.
 */
class Night {
public:
    /** seed: of the user's acts and the titles; what the threads make of them differs a little each time. */
    Night(std::unique_ptr<audio::AudioLibrary> library, unsigned seed);
    ~Night();

    /** seconds: how long it lasts. */
    NightReport Run(double seconds);

private:
    class Desk;
    std::unique_ptr<Desk> desk_;
};

} // namespace kalvo::test
