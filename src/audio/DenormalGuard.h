#pragma once

#if defined(__SSE__)
#include <xmmintrin.h>
#endif

namespace kalvo::audio {

/** While it lives, numbers too small to hear count as zero (flush to zero, denormals are zero): they cost time. */
class DenormalGuard {
public:
#if defined(__SSE__)
    DenormalGuard() : saved_(_mm_getcsr()) {
        _mm_setcsr(saved_ | 0x8040U);
    }
    ~DenormalGuard() {
        _mm_setcsr(saved_);
    }
#else
    DenormalGuard() = default;
#endif
    DenormalGuard(const DenormalGuard&) = delete;
    DenormalGuard& operator=(const DenormalGuard&) = delete;

private:
#if defined(__SSE__)
    unsigned saved_;
#endif
};

} // namespace kalvo::audio
