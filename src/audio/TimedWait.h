#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>

namespace kalvo::audio {

/** condition.wait_for(), in a form that GCC's thread sanitizer understands: it does not know the steady clock's wait.
 */
template<class Condition>
bool TimedWait(std::condition_variable& condition, std::unique_lock<std::mutex>& lock,
               std::chrono::milliseconds timeout, Condition met) {
#if defined(__SANITIZE_THREAD__)
    return condition.wait_until(lock, std::chrono::system_clock::now() + timeout, met);
#else
    return condition.wait_for(lock, timeout, met);
#endif
}

} // namespace kalvo::audio
