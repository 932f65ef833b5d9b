#pragma once

#include <QString>

#include <optional>

namespace kalvo {

/** The text of an entry's fifth place for a cue point: seconds with exactly one decimal, "12.4". */
QString CuePointText(double seconds);

/** The cue point in seconds; no value for anything that CuePointText does not write, an archive comment for example. */
std::optional<double> CuePoint(const QString& info);

} // namespace kalvo
