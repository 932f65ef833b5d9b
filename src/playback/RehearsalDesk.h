#pragma once

#include "playback/EqualiserSettings.h"
#include "playback/Mixer.h"
#include "playlists/Playlist.h"

#include <QHash>

#include <array>
#include <memory>

namespace kalvo {

/** What both players, the fader and the lists are doing at a moment. A value, for any thread. */
struct DeskMoment {
    struct Deck {
        DeckTitle title;
        double second = 0;
        audio::Activity activity = audio::Activity::Stopped;
        int pitch = 0; ///< tenths of a percent
    };
    std::array<PlaylistState, 2> lists;
    std::array<Deck, 2> decks;
    int fader = 0;
    int fadeTarget = 0; ///< player that a running fade moves to; 0: none

    /** Of a desk that runs; only looks. A title that is only listened to counts as none. */
    static DeskMoment Of(Mixer& mixer, const Playlist& list1, const Playlist& list2);
    const Deck& At(int player) const { return decks.at(static_cast<std::size_t>(player - 1)); }
};

/** How the desk mixes, besides its moment. */
struct RehearsalSettings {
    MixerOptions mixing;
    bool useCuePoints = true;
    EqualiserSettings equaliser;
    QHash<QString, double> gains; ///< dB by path, for titles that start with another one than 0

    /** Alike settings make alike joints, but for the gains of their titles. */
    QString Fingerprint() const;
};

/**
 * A desk of its own, with the same players, lists and rules as the running one and no connection to it: nothing is
 * counted, kept or heard. Belongs to the thread that made it.
 */
class RehearsalDesk {
public:
    RehearsalDesk(std::unique_ptr<audio::AudioLibrary> library, const RehearsalSettings& settings);

    bool IsOpen() const { return open_; }
    /**
     * Goes on from this moment, with what plays set back by so many seconds, or to its start. Where nothing plays,
     * Player 1 begins, or Player 2 when list 1 is empty.
     */
    void Begin(const DeskMoment& moment, double earlier = 0);
    DeskMoment Now() { return DeskMoment::Of(mixer, list1, list2); }

private:
    SystemRandom random_;
    AudioLayer layer_;
    bool open_;

public:
    Playlist list1;
    Playlist list2;
    Mixer mixer;
};

} // namespace kalvo
