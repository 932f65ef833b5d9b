#include "playlists/CuePoint.h"

namespace kalvo {

QString CuePointText(double seconds) { return QString::number(seconds, 'f', 1); }

std::optional<double> CuePoint(const QString& info) {
    bool isNumber = false;
    const double seconds = info.toDouble(&isNumber);
    if (!isNumber || seconds < 0 || CuePointText(seconds) != info)
        return std::nullopt;
    return seconds;
}

} // namespace kalvo
