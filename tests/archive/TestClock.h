#pragma once

#include "base/Clock.h"

namespace kalvo::test {

/** Stands still until it is moved. */
class TestClock final : public Clock {
public:
    QDateTime Now() const override { return QDateTime(QDate(2026, 3, 7), QTime(20, 15, 30)); }
    qint64 Milliseconds() const override { return milliseconds; }

    qint64 milliseconds = 1000;
};

} // namespace kalvo::test
