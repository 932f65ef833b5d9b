#pragma once

#include <QString>

/** Playing times as texts "mm:ss". */
namespace kalvo::PlayTime {

/** Two digits each, minutes as many as needed; halves are rounded up. Negative and not finite give "00:00". */
QString Format(double seconds);

/** Whole seconds of "m:ss" with any number of minute digits; -1 for every other text, "0" included. */
int Parse(QStringView text);

} // namespace kalvo::PlayTime
