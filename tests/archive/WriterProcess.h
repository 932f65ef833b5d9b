#pragma once

#include <QtGlobal>

#include <csignal>
#include <functional>
#include <sys/wait.h>
#include <unistd.h>

namespace kalvo::test {

/** A second process that writes while this one watches, kills and looks at what is left. */
class WriterProcess {
public:
    /** In the child: reports what it has done for certain. */
    using Report = std::function<void(qint64)>;

    explicit WriterProcess(const std::function<void(const Report&)>& work) {
        int ends[2] = {-1, -1};
        if (::pipe(ends) != 0)
            return;
        process_ = ::fork();
        if (process_ == 0) {
            ::close(ends[0]);
            work([&](qint64 done) {
                if (::write(ends[1], &done, sizeof done) != sizeof done)
                    ::_exit(2);
            });
            ::_exit(0);
        }
        ::close(ends[1]);
        reports_ = ends[0];
    }

    ~WriterProcess() {
        Kill();
        ::close(reports_);
    }
    WriterProcess(const WriterProcess&) = delete;
    WriterProcess& operator=(const WriterProcess&) = delete;

    /** The next report; -1 when the child has ended. */
    qint64 Next() {
        qint64 done = -1;
        return ::read(reports_, &done, sizeof done) == sizeof done ? done : -1;
    }

    /** Ends it in the midst of what it does; the last report that was written before comes back, or `known`. */
    qint64 KillAfter(qint64 known) {
        Kill();
        for (qint64 done = Next(); done >= 0; done = Next())
            known = done;
        return known;
    }

private:
    void Kill() {
        if (process_ <= 0)
            return;
        ::kill(process_, SIGKILL);
        ::waitpid(process_, nullptr, 0);
        process_ = -1;
    }

    pid_t process_ = -1;
    int reports_ = -1;
};

} // namespace kalvo::test
