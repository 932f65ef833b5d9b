#include "audio/Encoder.h"

#include "audio/FrameRing.h"
#include "audio/SoundFileWriter.h"
#include "audio/TimedWait.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <utility>

namespace kalvo::audio {

namespace {

constexpr auto kOpeningTimeout = std::chrono::seconds(2);
constexpr auto kLookEvery = std::chrono::milliseconds(20);
constexpr auto kHeaderEvery = std::chrono::milliseconds(250);
constexpr auto kDiskEvery = std::chrono::seconds(5);
constexpr std::size_t kPieceFrames = 4096;
constexpr int kMostParts = 10000;

/** "Name.wav" → "Name-2.wav". */
std::string PartPath(const std::string& path, int number) {
    const std::size_t dot = path.find_last_of("./");
    const std::size_t end = dot == std::string::npos || path[dot] == '/' ? path.size() : dot;
    return path.substr(0, end) + '-' + std::to_string(number) + path.substr(end);
}

} // namespace

/** What the audio thread, the control thread and the writing thread share. */
class Encoder::Writer {
public:
    Writer(SinkOpener opener, std::string path, EncodeSettings settings, int rate)
        : opener_(std::move(opener)),
          firstPath_(std::move(path)),
          settings_(std::move(settings)),
          rate_(rate),
          path_(firstPath_) {}

    void Run();

    // control thread
    /** How the creation of the file went. */
    EncodeError AwaitOpening(std::chrono::milliseconds timeout);
    void Finish(bool discard);
    bool AwaitEnd(std::chrono::milliseconds timeout);
    EncodeState State() const;

    FrameRing ring{kRingFrames};        // audio thread → writing thread
    std::atomic<bool> failed{false};    // written by the writing thread
    std::atomic<std::uint64_t> lost{0}; // written by the audio thread

private:
    EncodeError Open(const std::string& path);
    void WriteAll();
    bool WaitForWork();
    void Drain();
    EncodeError WritePiece(const float* stereo, std::size_t frames);
    EncodeError NextPart();
    void KeepPlayable();
    void Note(EncodeError error);

    // the writing thread's own
    SinkOpener opener_;
    std::string firstPath_;
    EncodeSettings settings_;
    int rate_;
    int part_ = 1;
    std::uint64_t inHeader_ = 0; // frames when the header was renewed last
    std::uint64_t onDisk_ = 0;   // frames when all was put on the disk last
    std::unique_ptr<SoundFileWriter> file_;
    std::chrono::steady_clock::time_point header_ = std::chrono::steady_clock::now();
    std::chrono::steady_clock::time_point disk_ = header_;

    mutable std::mutex mutex_;
    mutable std::condition_variable changed_;
    // guarded by mutex_; the writing thread reads without it what it alone writes
    bool opened_ = false;
    bool ending_ = false;
    bool discard_ = false;
    bool ended_ = false;
    EncodeError error_ = EncodeError::None;
    std::uint64_t frames_ = 0;
    std::uint64_t bytes_ = 0;
    std::string path_;
};

EncodeError Encoder::Writer::Open(const std::string& path) {
    EncodeError error = EncodeError::None;
    std::unique_ptr<ByteSink> bytes = opener_(path, error);
    if (bytes == nullptr)
        return error;
    file_ = SoundFileWriter::Create(std::move(bytes), settings_, rate_, error);
    if (file_ != nullptr) {
        const std::lock_guard lock(mutex_);
        path_ = path;
    }
    return error;
}

void Encoder::Writer::Run() {
    Note(Open(firstPath_));
    {
        const std::lock_guard lock(mutex_);
        opened_ = true;
        changed_.notify_all();
    }
    if (file_ != nullptr)
        WriteAll();
    const std::lock_guard lock(mutex_);
    ended_ = true;
    changed_.notify_all();
}

void Encoder::Writer::WriteAll() {
    for (bool more = true; more;) {
        more = WaitForWork();
        Drain();
        KeepPlayable();
    }
    Note(file_->Close());
    const std::lock_guard lock(mutex_);
    bytes_ = file_->Bytes();
    if (discard_)
        file_->Discard();
}

/** False: what is in the ring now is the rest. */
bool Encoder::Writer::WaitForWork() {
    std::unique_lock lock(mutex_);
    TimedWait(changed_, lock, kLookEvery, [this] { return ending_; });
    return !ending_;
}

void Encoder::Writer::Drain() {
    std::array<float, 2 * kPieceFrames> piece;
    while (const std::size_t got = ring.Read(piece.data(), kPieceFrames)) {
        if (failed)
            continue;
        const EncodeError error = WritePiece(piece.data(), got);
        Note(error);
        const std::lock_guard lock(mutex_);
        frames_ += error == EncodeError::None ? got : 0;
        bytes_ = file_->Bytes();
    }
}

EncodeError Encoder::Writer::WritePiece(const float* stereo, std::size_t frames) {
    const std::uint64_t most = frames * 2 * std::uint64_t(settings_.bits) / 8;
    if (settings_.format == EncodeFormat::Wav && file_->Bytes() + most > settings_.mostBytes) {
        if (const EncodeError error = NextPart(); error != EncodeError::None)
            return error;
    }
    return file_->Write(stereo, frames);
}

EncodeError Encoder::Writer::NextPart() {
    EncodeError error = file_->Close();
    if (error != EncodeError::None)
        return error;
    do {
        error = Open(PartPath(firstPath_, ++part_));
    } while (error == EncodeError::Exists && part_ < kMostParts);
    return error;
}

void Encoder::Writer::KeepPlayable() {
    const auto now = std::chrono::steady_clock::now();
    const bool toDisk = frames_ != onDisk_ && now - disk_ >= kDiskEvery;
    const bool header = frames_ != inHeader_ && now - header_ >= kHeaderEvery;
    if (failed || (!toDisk && !header))
        return;
    header_ = now;
    inHeader_ = frames_;
    if (toDisk) {
        disk_ = now;
        onDisk_ = frames_;
    }
    Note(file_->KeepPlayable(toDisk));
}

void Encoder::Writer::Note(EncodeError error) {
    if (error == EncodeError::None)
        return;
    failed = true;
    const std::lock_guard lock(mutex_);
    if (error_ == EncodeError::None)
        error_ = error;
}

EncodeError Encoder::Writer::AwaitOpening(std::chrono::milliseconds timeout) {
    std::unique_lock lock(mutex_);
    return TimedWait(changed_, lock, timeout, [this] { return opened_; }) ? error_ : EncodeError::Timeout;
}

void Encoder::Writer::Finish(bool discard) {
    const std::lock_guard lock(mutex_);
    ending_ = true;
    discard_ = discard_ || discard;
    changed_.notify_all();
}

bool Encoder::Writer::AwaitEnd(std::chrono::milliseconds timeout) {
    std::unique_lock lock(mutex_);
    return TimedWait(changed_, lock, timeout, [this] { return ended_; });
}

EncodeState Encoder::Writer::State() const {
    const std::lock_guard lock(mutex_);
    EncodeState state;
    state.error = error_;
    state.status = error_ != EncodeError::None ? EncodeStatus::Failed
                   : ended_                    ? EncodeStatus::Finished
                                               : EncodeStatus::Running;
    state.frames = frames_;
    state.lost = lost;
    state.bytes = bytes_;
    state.path = path_;
    return state;
}

std::unique_ptr<Encoder> Encoder::Start(const SinkOpener& opener, const std::string& path,
                                        const EncodeSettings& settings, int sampleRate, EncodeError& error) {
    auto writer = std::make_shared<Writer>(opener, path, settings, sampleRate);
    std::thread([writer] { writer->Run(); }).detach();
    error = writer->AwaitOpening(kOpeningTimeout);
    if (error == EncodeError::None)
        return std::unique_ptr<Encoder>(new Encoder(std::move(writer), sampleRate));
    writer->Finish(true);
    return nullptr;
}

Encoder::Encoder(std::shared_ptr<Writer> writer, int sampleRate)
    : writer_(std::move(writer)), sampleRate_(sampleRate) {}

Encoder::~Encoder() {
    Finish();
}

void Encoder::Write(const float* stereo, std::size_t frames) noexcept {
    if (writer_->failed.load(std::memory_order_relaxed))
        return;
    std::size_t done = 0;
    while (done < frames) {
        std::size_t piece = frames - done;
        float* to = writer_->ring.Writable(piece);
        if (piece == 0)
            break;
        std::copy_n(stereo + 2 * done, 2 * piece, to);
        writer_->ring.Commit(piece);
        done += piece;
    }
    if (done < frames)
        writer_->lost.fetch_add(frames - done, std::memory_order_relaxed);
}

void Encoder::WaitForRoom(std::size_t frames) {
    while (writer_->ring.Free() < frames && !writer_->failed)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
}

void Encoder::SourceGone() {
    sourceGone_ = true;
    Finish();
}

void Encoder::Finish() {
    writer_->Finish(false);
}

void Encoder::Discard() {
    writer_->Finish(true);
}

bool Encoder::AwaitEnd(std::chrono::milliseconds timeout) {
    return writer_->AwaitEnd(timeout);
}

EncodeState Encoder::State() const {
    return writer_->State();
}

} // namespace kalvo::audio
