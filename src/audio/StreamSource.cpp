#include "audio/StreamSource.h"

#include "audio/FrameRing.h"
#include "audio/OpenDecoder.h"
#include "audio/ReadAheadFile.h"
#include "audio/TimedWait.h"

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <thread>

namespace kalvo::audio {

namespace {

/** More than a second of every usual rate. */
constexpr std::size_t kRingFrames = 65536;
/** What is decoded before anybody waiting is told. */
constexpr std::size_t kPieceFrames = 4096;
/** How long the decoder rests when the ring is full: at four times the rate it is still far from empty then. */
constexpr std::chrono::milliseconds kRest{50};

} // namespace

/**
 * Owns the file (whose reader thread reads bytes ahead), its decoder, the ring and the decoder thread. A long file
 * plays before its length is known for certain; then a measuring thread reads it once more, by a file of its own, to
 * its end.
 *
 * One cycle of the decoder thread: after a seek it empties the ring, positions the decoder and makes the seek's
 * generation the current one; otherwise it decodes a piece into the ring and tells those who wait. With a full ring it
 * rests for kRest, after the end until the next seek. The rendering thread never wakes it.
 *
 * A seek raises `wanted`; until the decoder thread has followed with `current`, nothing is available. Frames in the
 * ring therefore always belong to `current`.
 *
 * Threads:
 *   control thread    construction, Seek, WaitFor, destruction
 *   rendering thread  Read, Available, AtEnd: atomics and the ring only
 *   decoder thread    Run and all that it calls
 *   measuring thread  Measure
 */
struct StreamSource::Shared {
    explicit Shared(std::unique_ptr<ByteSource> bytes)
        : another(bytes->Another()), file(std::move(bytes)), thread([this] { Run(); }) {}
    ~Shared();

    void Run();
    ErrorCode OpenFile();
    void StartMeasuring();
    void Measure();
    void ReadToTheEnd();
    void SetUnmeasured(bool value);
    void Decode();
    bool AwaitWork(std::uint64_t generation);
    std::uint64_t FollowSeek();
    void DecodePiece(std::uint64_t generation);
    void EndGeneration(std::uint64_t generation);
    void TellWaiting();

    std::size_t Available() const { return current.load() == wanted.load() ? ring.Available() : 0; }

    std::unique_ptr<ByteSource> another; // for measuring; the decoder thread's
    ReadAheadFile file;                  // used by the decoder thread; cancelled by the control thread
    std::unique_ptr<Decoder> decoder;    // the decoder thread's alone
    FrameRing ring{kRingFrames};
    SourceFormat format;                 // written by the decoder thread before `opened`, constant afterwards
    std::atomic<std::int64_t> frames{0}; // the length as known so far; decoder thread, then measuring thread
    std::atomic<int> bitrate{0};         // the same

    std::atomic<std::uint64_t> wanted{1};  // written by the control thread, under the mutex
    std::atomic<std::uint64_t> current{1}; // written by the decoder thread
    std::atomic<std::uint64_t> ended{0};   // the generation that has no more frames to come; by the decoder thread

    std::mutex mutex; // guards what follows
    std::condition_variable work;
    std::condition_variable news;
    bool opened = false; // by the decoder thread, with `error`
    ErrorCode error = ErrorCode::None;
    std::int64_t target = 0; // of the wanted generation
    bool hungry = false;     // somebody waits for frames: no rest
    bool unmeasured = false; // by the decoder thread, then the measuring thread
    bool stop = false;

    std::unique_ptr<ReadAheadFile> measured; // made by the decoder thread, used by the measuring thread
    std::thread measuring;                   // started by the decoder thread
    std::thread thread;                      // last: starts when all the rest is there
};

StreamSource::Shared::~Shared() {
    {
        const std::lock_guard lock(mutex);
        stop = true;
        work.notify_all();
    }
    file.Cancel();
    thread.join();
    if (measured)
        measured->Cancel();
    if (measuring.joinable())
        measuring.join();
}

void StreamSource::Shared::Run() {
    ErrorCode result = ErrorCode::Format;
    try {
        result = OpenFile();
    } catch (const std::exception&) { // no memory: the file counts as unplayable
        decoder.reset();
    }
    {
        const std::lock_guard lock(mutex);
        opened = true;
        error = result;
        news.notify_all();
    }
    if (result != ErrorCode::None)
        return;
    try {
        Decode();
    } catch (const std::exception&) {
        EndGeneration(current.load());
    }
}

ErrorCode StreamSource::Shared::OpenFile() {
    if (!file.WaitUntilOpen())
        return ErrorCode::File;
    decoder = OpenDecoder(file, another ? LengthNeed::Soon : LengthNeed::Exact);
    if (!decoder)
        return file.Failed() ? ErrorCode::File : ErrorCode::Format;
    format = decoder->Format();
    frames = format.frames;
    bitrate = format.bitrate;
    if (format.estimated)
        StartMeasuring();
    return ErrorCode::None;
}

/** What fails here, and in Measure(), leaves the estimate; playing finds the end by itself. */
void StreamSource::Shared::StartMeasuring() try {
    measured = std::make_unique<ReadAheadFile>(std::move(another));
    SetUnmeasured(true);
    measuring = std::thread([this] { Measure(); });
} catch (const std::exception&) { // no further thread
    SetUnmeasured(false);
}

void StreamSource::Shared::Measure() {
    try {
        ReadToTheEnd();
    } catch (const std::exception&) { // no memory
        measured->Cancel();
    }
    SetUnmeasured(false);
}

void StreamSource::Shared::SetUnmeasured(bool value) {
    const std::lock_guard lock(mutex);
    unmeasured = value;
    news.notify_all();
}

void StreamSource::Shared::ReadToTheEnd() {
    if (!measured->WaitUntilOpen())
        return;
    if (const auto exact = OpenDecoder(*measured, LengthNeed::Exact)) {
        frames = exact->Format().frames;
        bitrate = exact->Format().bitrate;
    }
}

void StreamSource::Shared::Decode() {
    std::uint64_t generation = 1;
    while (AwaitWork(generation)) {
        if (wanted.load() != generation)
            generation = FollowSeek();
        else
            DecodePiece(generation);
    }
}

/** False when the thread is to end. */
bool StreamSource::Shared::AwaitWork(std::uint64_t generation) {
    std::unique_lock lock(mutex);
    const auto called = [&] { return stop || wanted.load() != generation; };
    if (ended.load() == generation)
        work.wait(lock, called);
    else if (ring.Free() == 0)
        TimedWait(work, lock, kRest, [&] { return called() || (hungry && ring.Free() > 0); });
    hungry = false;
    return !stop;
}

std::uint64_t StreamSource::Shared::FollowSeek() {
    std::unique_lock lock(mutex);
    const std::uint64_t generation = wanted.load();
    const std::int64_t frame = std::clamp<std::int64_t>(target, 0, frames);
    lock.unlock();
    ring.Clear();
    const bool placed = decoder->Seek(frame);
    current.store(generation);
    if (!placed)
        EndGeneration(generation);
    return generation;
}

void StreamSource::Shared::DecodePiece(std::uint64_t generation) {
    std::size_t room = kPieceFrames;
    float* const place = ring.Writable(room);
    if (room == 0)
        return;
    std::size_t got = 0;
    if (decoder->Read(place, room, got) != ReadResult::Data) {
        EndGeneration(generation);
        return;
    }
    ring.Commit(got);
    TellWaiting();
}

void StreamSource::Shared::EndGeneration(std::uint64_t generation) {
    ended.store(generation);
    TellWaiting();
}

void StreamSource::Shared::TellWaiting() {
    const std::lock_guard lock(mutex);
    news.notify_all();
}

StreamSource::StreamSource() = default;
StreamSource::~StreamSource() = default;

std::unique_ptr<StreamSource> StreamSource::Open(const std::string& path, std::chrono::milliseconds timeout,
                                                 ErrorCode& error) {
    return Open(MakeFileSource(path), timeout, error);
}

std::unique_ptr<StreamSource> StreamSource::Open(std::unique_ptr<ByteSource> bytes, std::chrono::milliseconds timeout,
                                                 ErrorCode& error) {
    std::unique_ptr<StreamSource> source = Begin(std::move(bytes));
    error = source ? source->AwaitOpen(timeout) : ErrorCode::File;
    return error == ErrorCode::None ? std::move(source) : nullptr;
}

std::unique_ptr<StreamSource> StreamSource::Begin(std::unique_ptr<ByteSource> bytes) {
    std::unique_ptr<StreamSource> source(new StreamSource);
    try {
        source->shared_ = std::make_unique<Shared>(std::move(bytes));
    } catch (const std::exception&) { // no memory or no further thread
        return nullptr;
    }
    return source;
}

ErrorCode StreamSource::AwaitOpen(std::chrono::milliseconds timeout) {
    Shared& shared = *shared_;
    std::unique_lock lock(shared.mutex);
    const bool inTime = TimedWait(shared.news, lock, timeout, [&] { return shared.opened; });
    return inTime ? shared.error : ErrorCode::Timeout;
}

const SourceFormat& StreamSource::Format() const {
    return shared_->format;
}

std::int64_t StreamSource::Frames() const {
    return shared_->frames;
}

int StreamSource::Bitrate() const {
    return shared_->bitrate;
}

void StreamSource::AwaitLength(std::chrono::milliseconds timeout) {
    std::unique_lock lock(shared_->mutex);
    TimedWait(shared_->news, lock, timeout, [this] { return !shared_->unmeasured; });
}

void StreamSource::Seek(std::int64_t frame) {
    const std::lock_guard lock(shared_->mutex);
    shared_->target = frame;
    shared_->wanted.fetch_add(1);
    shared_->work.notify_all();
}

std::size_t StreamSource::Read(float* stereo, std::size_t frames) {
    return Available() > 0 ? shared_->ring.Read(stereo, frames) : 0;
}

std::size_t StreamSource::Available() const {
    return shared_->Available();
}

bool StreamSource::AtEnd() const {
    const std::uint64_t generation = shared_->wanted.load();
    if (shared_->ended.load() != generation || shared_->ring.Available() > 0)
        return false;
    // A seek just now may be what has emptied the ring.
    return shared_->wanted.load() == generation;
}

bool StreamSource::WaitFor(std::size_t frames, std::chrono::milliseconds timeout) {
    Shared& shared = *shared_;
    const std::size_t enough = std::min(frames, kRingFrames);
    std::unique_lock lock(shared.mutex);
    return TimedWait(shared.news, lock, timeout, [&] {
        if (shared.Available() >= enough || shared.ended.load() == shared.wanted.load())
            return true;
        shared.hungry = true;
        shared.work.notify_all();
        return false;
    });
}

} // namespace kalvo::audio
