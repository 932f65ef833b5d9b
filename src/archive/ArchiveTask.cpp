#include "archive/ArchiveTask.h"

namespace kalvo {

ArchiveTask::ArchiveTask(Archive& archive, QObject* parent) : QObject(parent), archive_(archive) {
    connect(&archive_, &Archive::IndexReady, this, &ArchiveTask::Proceed);
    connect(&archive_, &Archive::IndexFailed, this, &ArchiveTask::Proceed);
}

ArchiveTask::~ArchiveTask() {
    if (!last_)
        return;
    last_->Stop();
    last_->WaitBriefly();
}

bool ArchiveTask::StartTask() {
    if (IsRunning())
        return false;
    run_ = last_ = std::make_shared<BackgroundRun>(*this);
    waiting_ = true;
    QMetaObject::invokeMethod(this, &ArchiveTask::Proceed, Qt::QueuedConnection);
    return true;
}

void ArchiveTask::Proceed() {
    if (!waiting_ || archive_.IsLoading())
        return;
    waiting_ = false;
    if (archive_.IsIndexReady())
        run_->Begin(Prepare());
    else
        Abandon(false);
}

void ArchiveTask::Cancel() {
    if (IsRunning())
        Abandon(true);
}

void ArchiveTask::Abandon(bool cancelled) {
    waiting_ = false;
    run_->Stop();
    run_.reset();
    TellAbandoned(cancelled);
}

} // namespace kalvo
