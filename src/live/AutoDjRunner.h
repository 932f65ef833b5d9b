#pragma once

#include "live/AutoDj.h"

#include <QObject>
#include <QTimer>

#include <optional>

namespace kalvo {

/** Runs the automatic DJ in slices of a few milliseconds between the window's events. UI thread. */
class AutoDjRunner : public QObject {
    Q_OBJECT

public:
    /** Both outlive this. */
    AutoDjRunner(const TitleSource& source, RandomSource& random, QObject* parent = nullptr);

    /** Ignored while it runs. */
    void Start(const AutoDjTask& task);
    /** Drops what has been drawn; no signal follows. */
    void Cancel();
    bool IsRunning() const { return run_.has_value(); }

Q_SIGNALS:
    void Progress(int percent);
    /** The run with what it has drawn, good until the call returns. isReached: its goal; else nothing is left. */
    void Finished(const kalvo::AutoDj& run, bool isReached);

private:
    void Proceed();

    const TitleSource& source_;
    RandomSource& random_;
    std::optional<AutoDj> run_;
    QTimer turns_;
};

} // namespace kalvo
