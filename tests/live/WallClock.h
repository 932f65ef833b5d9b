#pragma once

#include "base/Clock.h"

#include <QTimeZone>

namespace kalvo::test {

using namespace Qt::StringLiterals;

/** The clock on a wall in Berlin, summer time included; moved by the test. */
class WallClock final : public Clock {
public:
    static QDateTime At(int year, int month, int day, int hour, int minute, int second) {
        return QDateTime(QDate(year, month, day), QTime(hour, minute, second), QTimeZone("Europe/Berlin"));
    }

    explicit WallClock(const QDateTime& start = At(2026, 3, 2, 7, 0, 0)) : now_(start) {}

    QDateTime Now() const override { return now_; }
    qint64 Milliseconds() const override { return now_.toMSecsSinceEpoch(); }
    /** So many seconds pass. */
    void Pass(qint64 seconds) {
        now_ = QDateTime::fromMSecsSinceEpoch(now_.toMSecsSinceEpoch() + seconds * 1000, now_.timeZone());
    }
    void Set(const QDateTime& now) { now_ = now; }

private:
    QDateTime now_;
};

} // namespace kalvo::test
