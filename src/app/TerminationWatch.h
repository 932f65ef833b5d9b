#pragma once

#include <QObject>

class QSocketNotifier;

namespace kalvo {

/**
 * Turns the signals with which a system asks a program to end (SIGTERM, SIGINT, SIGHUP: a logout, a shutdown, Ctrl+C)
 * into a Qt signal. A second one ends the program at once, as without a watch; one that the program was started to
 * ignore stays ignored. One at a time; UI thread.
 */
class TerminationWatch : public QObject {
    Q_OBJECT

public:
    TerminationWatch();
    ~TerminationWatch() override;

Q_SIGNALS:
    void Asked();

private:
    int pipe_[2] = {-1, -1}; ///< read and write end; the handler may do no more than write
    QSocketNotifier* notifier_ = nullptr;
};

} // namespace kalvo
