#include "audio/ReadAheadFile.h"

#include "audio/TimedWait.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <cstring>
#include <deque>
#include <mutex>

namespace kalvo::audio {

namespace {

constexpr auto kBlockSize = static_cast<std::int64_t>(ReadAheadFile::kBlockBytes);
/** A read that is not back by then counts as hanging when the file is closed. */
constexpr std::chrono::milliseconds kClosingPatience{100};

struct Block {
    std::unique_ptr<std::byte[]> bytes;
    std::size_t length = 0;
};

} // namespace

/** Shared by the decoding thread and the reader; everything but `source` is guarded by `mutex`. */
struct ReadAheadFile::Window {
    enum class State { Opening, Open, Failed };

    std::unique_ptr<ByteSource> source; // the reader's alone
    std::mutex mutex;
    std::condition_variable room; // towards the reader
    std::condition_variable news; // towards the decoding thread
    State state = State::Opening; // written by the reader
    std::int64_t size = 0;        // written by the reader
    std::int64_t first = 0;       // index of the oldest block held
    std::deque<Block> blocks;     // first, first + 1, ...
    std::int64_t reading = 0;     // index of the block being read from; written by the decoding thread
    std::uint64_t restarts = 0;   // tells a block that was asked for before the window moved
    bool broken = false;          // the block after the last one cannot be read; written by the reader
    bool cancelled = false;
    bool finished = false; // the reader is about to end

    std::int64_t Next() const { return first + static_cast<std::int64_t>(blocks.size()); }
    bool Holds(std::int64_t index) const { return index >= first && index < Next(); }
    bool Surplus() const { return reading - first > kKeptBlocks; }
    bool HasWork() const {
        return !broken && Next() * kBlockSize < size && (blocks.size() < kWindowBlocks || Surplus());
    }

    void Restart(std::int64_t index) {
        blocks.clear();
        first = index;
        broken = false;
        ++restarts;
    }

    void Run();
    void OpenSource();
    void FetchBlock(std::unique_lock<std::mutex>& lock);
    Block TakeBlock();
};

void ReadAheadFile::Window::OpenSource() {
    const bool opened = source->Open();
    const std::lock_guard lock(mutex);
    state = opened ? State::Open : State::Failed;
    size = opened ? source->Size() : 0;
    news.notify_all();
}

/** An empty block: the oldest one again when the window is full. */
Block ReadAheadFile::Window::TakeBlock() {
    Block block;
    if (blocks.size() < kWindowBlocks) {
        block.bytes = std::make_unique_for_overwrite<std::byte[]>(kBlockBytes);
    } else {
        block = std::move(blocks.front());
        blocks.pop_front();
        ++first;
    }
    return block;
}

void ReadAheadFile::Window::FetchBlock(std::unique_lock<std::mutex>& lock) {
    const std::uint64_t restart = restarts;
    Block block = TakeBlock();
    const std::int64_t start = Next() * kBlockSize;
    const std::int64_t wanted = std::min(kBlockSize, size - start);
    lock.unlock();
    const std::int64_t got = source->ReadAt(start, block.bytes.get(), static_cast<std::size_t>(wanted));
    lock.lock();
    if (restart != restarts)
        return;
    if (got < 0) {
        broken = true;
    } else {
        block.length = static_cast<std::size_t>(got);
        if (got < wanted)
            size = start + got;
        if (got > 0)
            blocks.push_back(std::move(block));
    }
    news.notify_all();
}

void ReadAheadFile::Window::Run() {
    OpenSource();
    std::unique_lock lock(mutex);
    while (!cancelled && state == State::Open) {
        room.wait(lock, [this] { return cancelled || HasWork(); });
        if (!cancelled)
            FetchBlock(lock);
    }
    finished = true;
    news.notify_all();
}

ReadAheadFile::ReadAheadFile(std::unique_ptr<ByteSource> source) : window_(std::make_shared<Window>()) {
    window_->source = std::move(source);
    reader_ = std::thread([window = window_] { window->Run(); });
}

ReadAheadFile::~ReadAheadFile() {
    Cancel();
    std::unique_lock lock(window_->mutex);
    const bool ended = TimedWait(window_->news, lock, kClosingPatience, [this] { return window_->finished; });
    lock.unlock();
    if (ended)
        reader_.join();
    else
        reader_.detach();
}

bool ReadAheadFile::WaitUntilOpen() {
    std::unique_lock lock(window_->mutex);
    window_->news.wait(lock, [this] { return window_->cancelled || window_->state != Window::State::Opening; });
    return !window_->cancelled && window_->state == Window::State::Open;
}

void ReadAheadFile::Cancel() noexcept {
    const std::lock_guard lock(window_->mutex);
    window_->cancelled = true;
    window_->room.notify_all();
    window_->news.notify_all();
}

std::int64_t ReadAheadFile::Size() const noexcept {
    const std::lock_guard lock(window_->mutex);
    return window_->size;
}

bool ReadAheadFile::Seek(std::int64_t position) noexcept {
    if (position < 0)
        return false;
    position_ = position;
    return true;
}

std::int64_t ReadAheadFile::Seek(std::int64_t offset, int whence) noexcept {
    const std::int64_t base = whence == SEEK_CUR ? position_ : whence == SEEK_END ? Size() : 0;
    return Seek(base + offset) ? position_ : -1;
}

std::int64_t ReadAheadFile::Read(void* buffer, std::size_t bytes) noexcept {
    auto* const target = static_cast<std::byte*>(buffer);
    std::size_t done = 0;
    while (done < bytes) {
        const std::int64_t got = ReadPiece(target + done, bytes - done);
        if (got < 0)
            failed_ = true;
        if (got < 0 && done == 0)
            return -1;
        if (got <= 0)
            break;
        done += static_cast<std::size_t>(got);
    }
    return static_cast<std::int64_t>(done);
}

/** Takes what the block at the present position holds; waits for that block. */
std::int64_t ReadAheadFile::ReadPiece(std::byte* buffer, std::size_t bytes) noexcept {
    Window& window = *window_;
    const std::int64_t index = position_ / kBlockSize;
    std::unique_lock lock(window.mutex);
    if (position_ >= window.size)
        return window.cancelled ? -1 : 0;
    if (!window.Holds(index) && index != window.Next())
        window.Restart(index);
    if (window.reading != index || window.blocks.empty()) {
        window.reading = index;
        window.room.notify_one();
    }
    window.news.wait(
        lock, [&] { return window.cancelled || window.broken || window.Holds(index) || position_ >= window.size; });
    if (window.cancelled || (window.broken && !window.Holds(index)))
        return -1;
    if (!window.Holds(index))
        return 0;
    const Block& block = window.blocks[static_cast<std::size_t>(index - window.first)];
    const auto offset = static_cast<std::size_t>(position_ % kBlockSize);
    if (offset >= block.length)
        return 0;
    const std::size_t got = std::min(bytes, block.length - offset);
    std::memcpy(buffer, block.bytes.get() + offset, got);
    position_ += static_cast<std::int64_t>(got);
    return static_cast<std::int64_t>(got);
}

} // namespace kalvo::audio
