#include "app/TerminationWatch.h"

#include <QSocketNotifier>
#include <QtGlobal>

#include <cerrno>
#include <csignal>

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

namespace kalvo {

#ifdef Q_OS_UNIX

namespace {

constexpr int kSignals[] = {SIGTERM, SIGINT, SIGHUP};
/** A handler has no other way to its object. */
volatile std::sig_atomic_t writeEnd = -1;

void Note(int /*signal*/) {
    const int interrupted = errno; // whichever thread this interrupts looks at its own
    const char byte = 0;
    [[maybe_unused]] const auto written = ::write(static_cast<int>(writeEnd), &byte, 1);
    errno = interrupted;
}

/** As a program started by nohup finds some of them: these stay so. */
bool IsIgnored(int number) {
    struct sigaction action = {};
    return ::sigaction(number, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

} // namespace

TerminationWatch::TerminationWatch() {
    if (::pipe(pipe_) != 0)
        return;
    writeEnd = pipe_[1];
    notifier_ = new QSocketNotifier(pipe_[0], QSocketNotifier::Read, this);
    connect(notifier_, &QSocketNotifier::activated, this, [this] {
        notifier_->setEnabled(false);
        Q_EMIT Asked();
    });
    struct sigaction action = {};
    action.sa_handler = &Note;
    action.sa_flags = static_cast<int>(SA_RESETHAND) | SA_RESTART;
    for (const int number : kSignals) {
        if (!IsIgnored(number))
            ::sigaction(number, &action, nullptr);
    }
}

TerminationWatch::~TerminationWatch() {
    for (const int number : kSignals) {
        if (!IsIgnored(number))
            std::signal(number, SIG_DFL);
    }
    delete notifier_;
    for (const int end : pipe_) {
        if (end >= 0)
            ::close(end);
    }
}

#else

TerminationWatch::TerminationWatch() = default;
TerminationWatch::~TerminationWatch() = default;

#endif

} // namespace kalvo
