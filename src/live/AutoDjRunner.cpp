#include "live/AutoDjRunner.h"

#include <QElapsedTimer>

namespace kalvo {

namespace {

constexpr int kSlice = 8; // ms

} // namespace

AutoDjRunner::AutoDjRunner(const TitleSource& source, RandomSource& random, QObject* parent)
    : QObject(parent), source_(source), random_(random) {
    turns_.setInterval(0);
    connect(&turns_, &QTimer::timeout, this, &AutoDjRunner::Proceed);
}

void AutoDjRunner::Start(const AutoDjTask& task) {
    if (IsRunning())
        return;
    run_.emplace(task, source_, random_);
    turns_.start();
}

void AutoDjRunner::Cancel() {
    turns_.stop();
    run_.reset();
}

void AutoDjRunner::Proceed() {
    AutoDj::State state = AutoDj::State::Running;
    QElapsedTimer slice;
    for (slice.start(); state == AutoDj::State::Running && slice.elapsed() < kSlice;)
        state = run_->Step();
    Q_EMIT Progress(run_->Percent());
    if (state == AutoDj::State::Running || !IsRunning())
        return;
    const AutoDj run = *std::move(run_);
    Cancel();
    Q_EMIT Finished(run, state == AutoDj::State::Reached);
}

} // namespace kalvo
