#include "playlists/CuePoint.h"

#include <cmath>

namespace kalvo {

QString CuePointText(double seconds) {
    return QString::number(seconds, 'f', 1);
}

std::optional<double> CuePoint(const QString& info) {
    bool isNumber = false;
    const double seconds = info.toDouble(&isNumber);
    if (!isNumber || !std::isfinite(seconds) || seconds < 0 || CuePointText(seconds) != info)
        return std::nullopt;
    return seconds;
}

} // namespace kalvo
