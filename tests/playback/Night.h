#pragma once

#include "playback/Mixer.h"
#include "playback/OfflineMix.h"

#include <QTemporaryDir>

#include <deque>
#include <functional>
#include <memory>
#include <random>
#include <vector>

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
    static constexpr double kLongestSilence = 0.2; ///< seconds
    static constexpr double kLargestBend = 0.002;

    /** seed: of the user's acts and the titles; what the threads make of them differs a little each time. */
    Night(std::unique_ptr<audio::AudioLibrary> library, unsigned seed);

    /** seconds: how long it lasts. */
    NightReport Run(double seconds);

private:
    void MakeFiles();
    void HoldEmergency();
    PlaylistEntry RandomEntry();
    void FillLists();

    bool Listen(const float* stereo, std::size_t frames);
    void Judge(double bend, bool isQuiet);
    void NoteFault(const QString& fault);
    void LiveOn();
    void ActOnPlayer(int player);
    void ActOnList(Playlist& list);
    void ChangeOptions();
    void SilenceAndMend(int player);
    void PressPlay(int player);
    void PullDisk();
    /** Empties players and lists; half a second later `measure` is told the memory. */
    void Rest(std::size_t& memory);
    /** Does it some seconds later; until then silence is wanted. */
    void MendLater(const char* act, std::function<void()> mend);
    void Note(const char* act);

    int UpTo(int most) { return static_cast<int>(chance_() % static_cast<unsigned>(most + 1)); }
    Playlist& List(int player) { return player == 1 ? list1_ : list2_; }

    QTemporaryDir disk_;
    QString folder_; ///< of the titles
    std::vector<QString> files_;
    std::mt19937 chance_;
    SystemRandom random_;
    AudioLayer layer_;
    Playlist list1_{1, random_};
    Playlist list2_{2, random_};
    Mixer mixer_;
    OfflineMix mix_;
    NightReport report_;
    double end_ = 0;
    double nextAct_ = 1;
    double diskBack_ = 0; ///< when it is plugged in again; 0 = it is there
    std::function<void()> mend_;
    double mendAt_ = 0;
    bool resting_ = false;
    int quiet_ = 0; ///< frames without sound up to now
    float before_[2] = {};
    std::deque<QString> lastActs_;
};

} // namespace kalvo::test
