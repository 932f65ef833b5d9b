#include "base/BackgroundPriority.h"

#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace kalvo {

namespace {

constexpr int kNiceness = 15;
// The system's headers do not name these.
constexpr int kOfThread = 1;
constexpr int kIdleClass = 3 << 13;

} // namespace

/** On Linux both calls reach the calling thread alone. */
void StepBehindMusic() {
    setpriority(PRIO_PROCESS, static_cast<id_t>(gettid()), kNiceness);
    syscall(SYS_ioprio_set, kOfThread, 0, kIdleClass);
}

} // namespace kalvo
