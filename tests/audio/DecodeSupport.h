#pragma once

#include "audio/ByteSource.h"
#include "audio/OpenDecoder.h"
#include "audio/ReadAheadFile.h"
#include "audio/TimedWait.h"
#include "support/SoundMaker.h"
#include "support/TestFolder.h"

#include <atomic>
#include <cmath>
#include <condition_variable>
#include <cstring>
#include <mutex>

namespace kalvo::audio::test {

using kalvo::test::MakeSound;
using kalvo::test::SoundSpec;
using kalvo::test::TestFolder;

/** options: arguments of the encoder, between blanks. */
inline SoundSpec Spec(double seconds, int rate = 44100, int channels = 2, const char* options = "",
                      int coverBytes = 0) {
    SoundSpec spec;
    spec.seconds = seconds;
    spec.rate = rate;
    spec.channels = channels;
    spec.options = QString::fromLatin1(options).split(u' ', Qt::SkipEmptyParts);
    spec.coverBytes = coverBytes;
    return spec;
}
/** What the encoder for such a file name makes. */
inline QByteArray SoundBytes(const char* name, const SoundSpec& spec) {
    const TestFolder folder;
    MakeSound(folder.Path(), QString::fromLatin1(name), spec);
    return folder.Read(QString::fromLatin1(name));
}

/** Bytes in memory whose delivery can be held up, cut short or made to fail while they are read. */
class FakeBytes final : public ByteSource {
public:
    /** Outlives the source: what the test does to it. */
    class Control {
    public:
        /** Reads and opening at or beyond `position` hang until Release(); 0 = opening too. */
        void HangFrom(std::int64_t position) {
            const std::lock_guard lock(mutex_);
            hang_ = position;
            changed_.notify_all();
        }
        void Release() { HangFrom(-1); }
        void FailFrom(std::int64_t position) { fail_ = position; }
        void CutAt(std::int64_t position) { cut_ = position; }
        /** Waits until a call hangs; false after ten seconds. */
        bool AwaitHanging() {
            std::unique_lock lock(mutex_);
            return TimedWait(changed_, lock, std::chrono::seconds(10), [this] { return hanging_ > 0; });
        }

    private:
        friend class FakeBytes;
        void Pass(std::int64_t end) {
            std::unique_lock lock(mutex_);
            const auto free = [&] { return hang_ < 0 || end <= hang_; };
            if (free())
                return;
            ++hanging_;
            changed_.notify_all();
            changed_.wait(lock, free);
            --hanging_;
        }

        std::mutex mutex_; // hang_ and hanging_
        std::condition_variable changed_;
        std::int64_t hang_ = -1;
        int hanging_ = 0;
        std::atomic<std::int64_t> fail_{INT64_MAX}, cut_{INT64_MAX};
    };

    /** another: of a further access to the same bytes; null: there is none. */
    explicit FakeBytes(QByteArray bytes, std::shared_ptr<Control> control = std::make_shared<Control>(),
                       std::shared_ptr<Control> another = nullptr)
        : bytes_(std::move(bytes)), control_(std::move(control)), another_(std::move(another)) {}

    bool Open() override {
        control_->Pass(1);
        return true;
    }
    std::int64_t Size() const override { return bytes_.size(); }
    std::int64_t ReadAt(std::int64_t position, void* buffer, std::size_t bytes) override {
        const auto end = position + static_cast<std::int64_t>(bytes);
        control_->Pass(end);
        if (end > control_->fail_)
            return -1;
        const std::int64_t size = std::min<std::int64_t>(control_->cut_, bytes_.size());
        const std::int64_t got = std::max<std::int64_t>(0, std::min(end, size) - position);
        std::memcpy(buffer, bytes_.constData() + position, static_cast<std::size_t>(got));
        return got;
    }
    std::unique_ptr<ByteSource> Another() const override {
        return another_ ? std::make_unique<FakeBytes>(bytes_, another_) : nullptr;
    }

private:
    QByteArray bytes_;
    std::shared_ptr<Control> control_, another_;
};

/** A file with the decoder that fits it; `decoder` is null when there is none. */
struct OpenedFile {
    explicit OpenedFile(const QString& path) : OpenedFile(MakeFileSource(QFile::encodeName(path).toStdString())) {}
    explicit OpenedFile(std::unique_ptr<ByteSource> bytes) : file(std::move(bytes)) {
        if (file.WaitUntilOpen())
            decoder = OpenDecoder(file);
    }
    explicit OpenedFile(const QByteArray& bytes) : OpenedFile(std::make_unique<FakeBytes>(bytes)) {}

    ReadAheadFile file;
    std::unique_ptr<Decoder> decoder;
};

/** Reads to the end in pieces of odd sizes; `last` tells how it ended. */
inline std::vector<float> DecodeRest(Decoder& decoder, ReadResult* last = nullptr) {
    std::vector<float> all;
    float piece[2 * 1777];
    std::size_t got = 0;
    ReadResult result = ReadResult::Data;
    while ((result = decoder.Read(piece, 1777, got)) == ReadResult::Data)
        all.insert(all.end(), piece, piece + got * 2);
    if (last != nullptr)
        *last = result;
    return all;
}
/** Largest difference between `part` and `whole` from frame `start` on; 9 when `part` reaches beyond it. */
inline float Difference(const std::vector<float>& whole, std::int64_t start, const std::vector<float>& part) {
    const auto offset = static_cast<std::size_t>(start) * 2;
    if (offset + part.size() > whole.size())
        return 9;
    float largest = 0;
    for (std::size_t i = 0; i < part.size(); ++i)
        largest = std::max(largest, std::abs(whole[offset + i] - part[i]));
    return largest;
}
/** Upward zero crossings of the left side in a second of 44,100 frames: the tone's frequency. */
inline int Waves(const std::vector<float>& stereo, std::size_t from) {
    int waves = 0;
    for (std::size_t frame = from; frame < from + 44100; ++frame)
        waves += stereo.at(frame * 2) < 0 && stereo.at(frame * 2 + 2) >= 0 ? 1 : 0;
    return waves;
}
/** Largest value of one side, 0 left, 1 right, between two frames. */
inline float Peak(const std::vector<float>& stereo, int side, std::int64_t from, std::int64_t to) {
    float peak = 0;
    for (auto frame = static_cast<std::size_t>(from); frame < static_cast<std::size_t>(to); ++frame)
        peak = std::max(peak, std::abs(stereo.at(frame * 2 + static_cast<std::size_t>(side))));
    return peak;
}

} // namespace kalvo::audio::test
