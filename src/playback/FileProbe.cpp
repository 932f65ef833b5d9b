#include "playback/FileProbe.h"

#include "audio/TimedWait.h"
#include "playback/DeckTitles.h"

#include <algorithm>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <system_error>
#include <thread>
#include <utility>

namespace kalvo {

struct FileProbe::Asking {
    void Run();
    /** No value: no answer in time. */
    std::optional<bool> Ask(const QString& file, std::chrono::milliseconds patience);
    bool Answered();
    void End();

    std::thread thread;
    std::mutex mutex; // guards what follows
    std::condition_variable changed;
    QString path;
    bool asked = false;
    std::optional<bool> answer;
    bool ending = false;
};

void FileProbe::Asking::Run() {
    std::unique_lock lock(mutex);
    for (;;) {
        changed.wait(lock, [this] { return asked || ending; });
        if (!asked)
            return;
        const QString file = path;
        lock.unlock();
        const bool exists = FileExists(file);
        lock.lock();
        asked = false;
        answer = exists;
        changed.notify_all();
    }
}

std::optional<bool> FileProbe::Asking::Ask(const QString& file, std::chrono::milliseconds patience) {
    std::unique_lock lock(mutex);
    path = file;
    answer.reset();
    asked = true;
    changed.notify_all();
    audio::TimedWait(changed, lock, patience, [this] { return answer.has_value(); });
    return answer;
}

bool FileProbe::Asking::Answered() {
    const std::lock_guard lock(mutex);
    return answer.has_value();
}

void FileProbe::Asking::End() {
    const std::lock_guard lock(mutex);
    ending = true;
    changed.notify_all();
}

FileProbe::FileProbe() = default;

FileProbe::~FileProbe() {
    if (asking_) {
        asking_->End();
        asking_->thread.join();
    }
}

bool FileProbe::Exists(const QString& path) {
    const QString folder = path.left(path.lastIndexOf(u'/'));
    if (Hangs(folder))
        return true;
    if (!asking_) {
        auto asking = std::make_shared<Asking>();
        try {
            asking->thread = std::thread([asking] { asking->Run(); });
        } catch (const std::system_error&) { // no further thread
            return true;
        }
        asking_ = std::move(asking);
    }
    if (const std::optional<bool> answer = asking_->Ask(path, patience_))
        return *answer;
    asking_->End();
    asking_->thread.detach();
    hanging_.push_back(std::exchange(asking_, nullptr));
    return true;
}

bool FileProbe::Hangs(const QString& folder) {
    std::erase_if(hanging_, [](const auto& asking) { return asking->Answered(); });
    return std::any_of(hanging_.begin(), hanging_.end(), [&folder](const auto& asking) {
        return asking->path.left(asking->path.lastIndexOf(u'/')) == folder; // constant since it was left to itself
    });
}

} // namespace kalvo
