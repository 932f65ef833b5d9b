#pragma once

#include "audio/TitleInspection.h"
#include "playback/FileStamp.h"

#include <QJsonArray>

namespace kalvo {

/** What was found in a file as it was then; no stamp: there was no file. */
struct InspectedTitle {
    static constexpr qsizetype kPlaces = 13; ///< size, time, then the findings in their order

    FileStamp stamp;
    audio::TitleInspection found;

    bool IsMissing() const { return stamp == FileStamp(); }
    QJsonArray Places() const;
    static InspectedTitle FromPlaces(const QJsonArray& places);
    bool operator==(const InspectedTitle&) const = default;
};

} // namespace kalvo
