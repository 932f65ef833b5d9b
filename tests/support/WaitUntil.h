#pragma once

#include <QCoreApplication>
#include <QThread>

#include <chrono>

namespace kalvo::test {

/** Looks every few milliseconds, running pending events in between, until the condition holds; false if too late. */
template<typename Condition>
bool WaitUntil(Condition condition, std::chrono::milliseconds deadline = std::chrono::seconds(20)) {
    const auto end = std::chrono::steady_clock::now() + deadline;
    while (!condition()) {
        if (std::chrono::steady_clock::now() >= end)
            return condition();
        QCoreApplication::processEvents();
        QThread::msleep(5);
    }
    return true;
}

} // namespace kalvo::test
