#pragma once

namespace kalvo::test {

/**
 * While one lives, the calls of this thread that an audio callback must not make are counted: allocating and freeing,
 * taking a lock, waiting, waking somebody, reading or writing a file. The test program puts itself in front of the
 * system's functions for it, so that calls from within libraries count as well. One at a time in a thread.
 */
class CallWatch {
public:
    CallWatch();
    ~CallWatch();
    CallWatch(const CallWatch&) = delete;
    CallWatch& operator=(const CallWatch&) = delete;

    /** None with sanitizers, which have taken the same functions. */
    int Calls() const;
    /** Name of the first of the calls; "" when there was none. */
    const char* First() const;
};

} // namespace kalvo::test
