#include "playlists/CueText.h"

#include <cmath>

namespace kalvo::CueText {

QString Write(double seconds) {
    return QString::number(seconds, 'f', 1);
}

std::optional<double> Read(const QString& info) {
    bool isNumber = false;
    const double seconds = info.toDouble(&isNumber);
    if (!isNumber || !std::isfinite(seconds) || seconds < 0 || Write(seconds) != info)
        return std::nullopt;
    return seconds;
}

} // namespace kalvo::CueText
