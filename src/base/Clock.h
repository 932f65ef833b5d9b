#pragma once

#include <QDateTime>

namespace kalvo {

/** What time it is; tests give a chosen one. */
class Clock {
public:
    Clock() = default;
    Clock(const Clock&) = delete;
    Clock& operator=(const Clock&) = delete;
    virtual ~Clock() = default;

    /** Wall clock in local time; may jump. */
    virtual QDateTime Now() const = 0;
    /** Milliseconds since some fixed moment; never goes back. */
    virtual qint64 Milliseconds() const = 0;
};

class SystemClock final : public Clock {
public:
    QDateTime Now() const override;
    qint64 Milliseconds() const override;
};

} // namespace kalvo
