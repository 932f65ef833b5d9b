#pragma once

#include <QString>
#include <QWidget>
#include <gtest/gtest.h>

namespace kalvo::test {

/** The part of a window with this name; the test fails when there is none. */
template<typename T = QWidget>
T* Part(QWidget& window, const char* name) {
    auto* part = window.findChild<T*>(QString::fromLatin1(name));
    EXPECT_TRUE(part) << name;
    return part;
}

} // namespace kalvo::test
