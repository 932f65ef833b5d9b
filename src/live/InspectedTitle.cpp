#include "live/InspectedTitle.h"

namespace kalvo {

QJsonArray InspectedTitle::Places() const {
    return {stamp.size,          stamp.time,           found.decoded,           found.told,
            int(found.broken),   found.silenceAtStart, found.silenceAtEnd,      found.longestGap,
            found.gapAt,         found.clippedRuns,    found.measures.loudness, found.measures.peak,
            found.measures.tempo};
}

InspectedTitle InspectedTitle::FromPlaces(const QJsonArray& places) {
    const auto number = [&places](int place) { return places[place].toDouble(); };
    InspectedTitle title;
    title.stamp = {places[0].toInteger(), places[1].toInteger()};
    audio::TitleInspection& found = title.found;
    found.decoded = number(2);
    found.told = number(3);
    found.broken = number(4) != 0;
    found.silenceAtStart = number(5);
    found.silenceAtEnd = number(6);
    found.longestGap = number(7);
    found.gapAt = number(8);
    found.clippedRuns = places[9].toInt();
    found.measures = {number(10), number(11), number(12)};
    return title;
}

} // namespace kalvo
