#include "CallWatch.h"

#include "support/Sanitized.h"

#include <dlfcn.h>
#include <pthread.h>
#include <unistd.h>

#include <cstddef>
#include <ctime>

namespace {

thread_local bool watching = false;
thread_local int calls = 0;
thread_local const char* first = "";

} // namespace

namespace kalvo::test {

CallWatch::CallWatch() {
    calls = 0;
    first = "";
    watching = true;
}

CallWatch::~CallWatch() {
    watching = false;
}

int CallWatch::Calls() const {
    return calls;
}

const char* CallWatch::First() const {
    return first;
}

bool CallWatch::Works() {
    return !kSanitized;
}

} // namespace kalvo::test

#if !defined(KALVO_SANITIZED)

namespace {

void Note(const char* name) {
    if (!watching)
        return;
    if (calls++ == 0)
        first = name;
}

template<typename Function>
Function Real(const char* name) {
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

} // namespace

// The C library's own names for what stands behind malloc() and its like.
extern "C" {
void* __libc_malloc(std::size_t);
void* __libc_calloc(std::size_t, std::size_t);
void* __libc_realloc(void*, std::size_t);
void* __libc_memalign(std::size_t, std::size_t);
void __libc_free(void*);
}

#define KALVO_SHOWN extern "C" __attribute__((visibility("default")))

KALVO_SHOWN void* malloc(std::size_t size) {
    Note("malloc");
    return __libc_malloc(size);
}

KALVO_SHOWN void* calloc(std::size_t count, std::size_t size) {
    Note("calloc");
    return __libc_calloc(count, size);
}

KALVO_SHOWN void* realloc(void* memory, std::size_t size) {
    Note("realloc");
    return __libc_realloc(memory, size);
}

KALVO_SHOWN void* aligned_alloc(std::size_t alignment, std::size_t size) {
    Note("aligned_alloc");
    return __libc_memalign(alignment, size);
}

KALVO_SHOWN void free(void* memory) {
    Note("free");
    __libc_free(memory);
}

/** Puts this program's `name` in front of the system's. */
#define KALVO_IN_FRONT(name, result, parameters, arguments)                                                            \
    KALVO_SHOWN result name parameters {                                                                               \
        static const auto real = Real<result(*) parameters>(#name);                                                    \
        Note(#name);                                                                                                   \
        return real arguments;                                                                                         \
    }

KALVO_IN_FRONT(pthread_mutex_lock, int, (pthread_mutex_t * mutex), (mutex))
KALVO_IN_FRONT(pthread_mutex_trylock, int, (pthread_mutex_t * mutex), (mutex))
KALVO_IN_FRONT(pthread_rwlock_rdlock, int, (pthread_rwlock_t * lock), (lock))
KALVO_IN_FRONT(pthread_rwlock_wrlock, int, (pthread_rwlock_t * lock), (lock))
KALVO_IN_FRONT(pthread_cond_wait, int, (pthread_cond_t * condition, pthread_mutex_t* mutex), (condition, mutex))
KALVO_IN_FRONT(pthread_cond_signal, int, (pthread_cond_t * condition), (condition))
KALVO_IN_FRONT(pthread_cond_broadcast, int, (pthread_cond_t * condition), (condition))
KALVO_IN_FRONT(nanosleep, int, (const timespec* time, timespec* left), (time, left))
KALVO_IN_FRONT(pread, ssize_t, (int file, void* buffer, std::size_t bytes, off_t place), (file, buffer, bytes, place))
KALVO_IN_FRONT(write, ssize_t, (int file, const void* buffer, std::size_t bytes), (file, buffer, bytes))

#endif
