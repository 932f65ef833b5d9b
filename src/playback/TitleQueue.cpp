#include "playback/TitleQueue.h"

#include "base/BackgroundPriority.h"

#include <utility>

namespace kalvo {

TitleQueue::TitleQueue() {
    worker_.Do([] {
        StepBehindMusic();
        return BackgroundWorker::Answer();
    });
}

TitleQueue::~TitleQueue() {
    *cancelled_ = true;
}

void TitleQueue::Request(const QString& path, Look look) {
    if (waiting_.contains(path))
        return;
    waiting_.insert(path);
    worker_.Do([this, path, look = std::move(look), cancelled = cancelled_]() -> BackgroundWorker::Answer {
        BackgroundWorker::Answer answer = look(*cancelled);
        if (*cancelled)
            return {};
        return [this, path, answer = std::move(answer)] {
            if (waiting_.remove(path)) // else cancelled meanwhile
                answer();
        };
    });
}

void TitleQueue::Cancel() {
    *cancelled_ = true;
    cancelled_ = std::make_shared<std::atomic<bool>>(false);
    worker_.DropWaiting();
    waiting_.clear();
}

} // namespace kalvo
