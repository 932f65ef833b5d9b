#pragma once

#include "playback/DeckTitles.h"

#include <QString>
#include <QVariantMap>

namespace kalvo {

/** What the desk does, seen as one player: what the guests hear, and what the desktop can do about it. */
struct DeskFacts {
    enum class Activity : unsigned char { Stopped, Playing, Paused };

    Activity activity = Activity::Stopped;
    int track = 0; ///< grows with each title that comes on air
    DeckTitle title;
    QString album;
    QString artUrl;       ///< of the cover; empty = none
    int masterVolume = 0; ///< 0..100
    int pitch = 0;        ///< tenths of a percent
    bool canPlay = false; ///< there is something to start or to go on with
    bool hasNext = false;
};

/** Those facts in the words of MPRIS: https://specifications.freedesktop.org/mpris-spec/. Pure functions. */
namespace mpris {

constexpr double kMicroseconds = 1e6; ///< a second

/** Object path of a title; "NoTrack" for number 0. */
QString TrackPath(int track);
/** Property by name, with exactly the types of the interface "Player"; without Position, which is never told. */
QVariantMap Properties(const DeskFacts& facts);
/** Those of `after` that are not the same in `before`. */
QVariantMap Changes(const QVariantMap& before, const QVariantMap& after);
/** Where a title stands after the time in seconds, if it has neither been stopped nor moved. */
double Expected(double position, double seconds, const DeskFacts& facts);
/** MIME types of the files that can be given to the program. */
QStringList MimeTypes();

} // namespace mpris

} // namespace kalvo
