#pragma once

#include "audio/TitleMeasure.h"
#include "playback/FileStamp.h"

#include <QJsonArray>

namespace kalvo {

/** What a title has been measured to, and the file it was then. */
struct MeasuredTitle {
    static constexpr qsizetype kPlaces = 5; ///< size, time, loudness, peak, tempo

    FileStamp stamp;
    audio::TitleMeasures measures;

    QJsonArray Places() const;
    static MeasuredTitle FromPlaces(const QJsonArray& places);
};

/**
 * The gain in dB that brings a title to -16 LUFS: 12 dB down and 6 dB up at most, and upwards never so far that its
 * peak would need the limiter. 0 for silence.
 */
double LevellingGain(const audio::TitleMeasures& measures);

} // namespace kalvo
