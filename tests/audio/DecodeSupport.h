#pragma once

#include "audio/ByteSource.h"
#include "audio/Decoder.h"
#include "audio/ReadAheadFile.h"

#include <QByteArray>
#include <QString>

#include <condition_variable>
#include <memory>
#include <mutex>
#include <vector>

namespace kalvo::audio::test {

/** Bytes in memory whose delivery can be held up, cut short or made to fail while they are read. */
class FakeBytes final : public ByteSource {
public:
    /** Outlives the source: what the test does to it. */
    class Control {
    public:
        /** Reads and opening at or beyond `position` hang until Release(); 0 = opening too. */
        void HangFrom(std::int64_t position);
        void Release();
        void FailFrom(std::int64_t position);
        void CutAt(std::int64_t position);
        /** Waits until a call hangs; false after ten seconds. */
        bool AwaitHanging();
        /** The furthest byte that has been asked for. */
        std::int64_t Reached() const;

    private:
        friend class FakeBytes;
        void Pass(std::int64_t end);

        mutable std::mutex mutex_;
        std::condition_variable changed_;
        std::int64_t hang_ = -1;
        std::int64_t fail_ = -1;
        std::int64_t cut_ = -1;
        std::int64_t reached_ = 0;
        int hanging_ = 0;
    };

    /** another: of a further access to the same bytes; null: there is none. */
    FakeBytes(QByteArray bytes, std::shared_ptr<Control> control, std::shared_ptr<Control> another = nullptr);

    bool Open() override;
    std::int64_t Size() const override { return bytes_.size(); }
    std::int64_t ReadAt(std::int64_t position, void* buffer, std::size_t bytes) override;
    std::unique_ptr<ByteSource> Another() const override;

private:
    QByteArray bytes_;
    std::shared_ptr<Control> control_;
    std::shared_ptr<Control> another_;
};

/** A file with the decoder that fits it; `decoder` is null when there is none. */
struct OpenedFile {
    explicit OpenedFile(const QString& path);
    explicit OpenedFile(std::unique_ptr<ByteSource> bytes);

    ReadAheadFile file;
    std::unique_ptr<Decoder> decoder;
};

/** Reads to the end in pieces of odd sizes; `last` tells how it ended. */
std::vector<float> DecodeRest(Decoder& decoder, ReadResult* last = nullptr);
/** Largest difference between `part` and `whole` from frame `start` on; 9 when `part` reaches beyond it. */
float Difference(const std::vector<float>& whole, std::int64_t start, const std::vector<float>& part);
/** Largest value of one side, 0 left, 1 right, between two frames. */
float Peak(const std::vector<float>& stereo, int side, std::int64_t from, std::int64_t to);

} // namespace kalvo::audio::test
