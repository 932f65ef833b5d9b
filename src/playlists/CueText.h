#pragma once

#include <QString>

#include <optional>

/** Cue points as the texts that stand in an entry's fifth place: seconds with exactly one decimal, "12.4". */
namespace kalvo::CueText {

QString Write(double seconds);

/** No value for anything that Write does not give, an archive comment for example. */
std::optional<double> Read(const QString& info);

} // namespace kalvo::CueText
