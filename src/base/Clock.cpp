#include "base/Clock.h"

#include <chrono>

namespace kalvo {

QDateTime SystemClock::Now() const {
    return QDateTime::currentDateTime();
}

qint64 SystemClock::Milliseconds() const {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::milliseconds>(now).count();
}

} // namespace kalvo
