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
Function Next(const char* name) {
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

/** Puts this program's `name` in front of the system's, which is `real`. */
#define KALVO_IN_FRONT_OF(real, name, result, parameters, arguments)                                                   \
    extern "C" __attribute__((visibility("default"))) result name parameters {                                         \
        static const auto function = real;                                                                             \
        Note(#name);                                                                                                   \
        return function arguments;                                                                                     \
    }
#define KALVO_IN_FRONT(name, result, parameters, arguments)                                                            \
    KALVO_IN_FRONT_OF(Next<result(*) parameters>(#name), name, result, parameters, arguments)

KALVO_IN_FRONT_OF(__libc_malloc, malloc, void*, (std::size_t size), (size))
KALVO_IN_FRONT_OF(__libc_calloc, calloc, void*, (std::size_t count, std::size_t size), (count, size))
KALVO_IN_FRONT_OF(__libc_realloc, realloc, void*, (void* memory, std::size_t size), (memory, size))
KALVO_IN_FRONT_OF(__libc_memalign, aligned_alloc, void*, (std::size_t alignment, std::size_t size), (alignment, size))
KALVO_IN_FRONT_OF(__libc_free, free, void, (void* memory), (memory))
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
