#pragma once

// Whether the program watches its own memory or threads: it is slower by far then, and some of the system's functions
// are taken.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define KALVO_SANITIZED 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define KALVO_SANITIZED 1
#endif
#endif

namespace kalvo::test {

#if defined(KALVO_SANITIZED)
constexpr bool kSanitized = true;
#else
constexpr bool kSanitized = false;
#endif

} // namespace kalvo::test
