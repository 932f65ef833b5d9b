#pragma once

#include "playback/Mixer.h"
#include "playlists/PlaylistEntry.h"

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QString>

#include <array>
#include <optional>

namespace kalvo {

struct Desk;

/** What one player was doing. */
struct SessionPlayer {
    DeckTitle title; ///< names, path and cue point
    bool playing = false;
    bool paused = false;
    double second = 0;
    bool muted = false;
    int pitch = 0; ///< tenths of a percent

    bool IsLoaded() const { return playing || paused; }
};

/** How one list was marked, and its entries while the playlist file does not hold them yet. */
struct SessionList {
    QString icons; ///< a digit an entry: PlaylistEntry::icon
    int red = -1;
    QString redPath; ///< of the red entry, to know the list again
    bool passedOver = false;
    std::optional<QList<PlaylistEntry>> unsaved;
};

/** The desk as a running program leaves it behind: enough to go on where the music stopped. UI thread. */
struct SessionState {
    QDateTime written; ///< invalid: not told
    std::array<SessionPlayer, 2> players;
    std::array<SessionList, 2> lists;
    int fader = 0;
    int fadeTarget = 0; ///< player that a running fade moves to; 0 = none
    int volume = 100;   ///< of the main output
    MixerOptions options;

    static SessionState Of(Desk& desk);
    /** None when the bytes are no such state. What is missing in them takes its default. */
    static std::optional<SessionState> FromJson(const QByteArray& bytes);
    /** Without `written`: equal states give equal bytes. */
    QByteArray ToJson() const;
    /** The same with the moment it is written. */
    static QByteArray Dated(QByteArray json, const QDateTime& moment);

    /** Whether a title was playing or paused. */
    bool HasMusic() const { return players[0].IsLoaded() || players[1].IsLoaded(); }
    bool IsPlaying() const { return players[0].playing || players[1].playing; }
    /** The player whose title the guests heard, or would hear after a pause; 0 when there is no music. */
    int OnAirPlayer() const;

    /** Brings entries back that the playlist file does not hold. */
    void RestoreEntries(Desk& desk) const;
    /** Marks, options, fader and players, in this order; the lists have to hold their entries already. */
    void Resume(Desk& desk) const;
};

} // namespace kalvo
