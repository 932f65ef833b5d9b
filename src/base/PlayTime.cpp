#include "base/PlayTime.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace kalvo::PlayTime {

namespace {

constexpr int minuteSeconds = 60;

bool IsNumber(QStringView text) {
    return !text.isEmpty() &&
           std::all_of(text.begin(), text.end(), [](QChar digit) { return digit >= u'0' && digit <= u'9'; });
}

} // namespace

QString Format(double seconds) {
    if (!std::isfinite(seconds) || seconds < 0)
        seconds = 0;
    const auto whole = static_cast<qint64>(std::min(std::floor(seconds + 0.5), 1e15));
    return QStringLiteral("%1:%2")
        .arg(whole / minuteSeconds, 2, 10, QChar(u'0'))
        .arg(whole % minuteSeconds, 2, 10, QChar(u'0'));
}

int Parse(QStringView text) {
    const qsizetype colon = text.indexOf(u':');
    if (colon < 0 || text.size() - colon != 3)
        return -1;
    const QStringView minutesText = text.left(colon);
    const QStringView secondsText = text.mid(colon + 1);
    bool fits = false;
    const int minutes = minutesText.toInt(&fits);
    const int seconds = secondsText.toInt();
    if (!fits || !IsNumber(minutesText) || !IsNumber(secondsText) || seconds >= minuteSeconds ||
        minutes > std::numeric_limits<int>::max() / minuteSeconds - 1)
        return -1;
    return minutes * minuteSeconds + seconds;
}

} // namespace kalvo::PlayTime
