#pragma once

#include <QCursor>
#include <QGuiApplication>

namespace kalvo {

/** The waiting cursor over the whole program while one lives. */
class HourGlass {
public:
    HourGlass() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
    ~HourGlass() { QGuiApplication::restoreOverrideCursor(); }
    HourGlass(const HourGlass&) = delete;
    HourGlass& operator=(const HourGlass&) = delete;
};

} // namespace kalvo
