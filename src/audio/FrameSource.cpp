#include "audio/FrameSource.h"

#include <utility>

namespace kalvo::audio {

namespace {

class FileSource final : public FrameSource {
public:
    explicit FileSource(std::unique_ptr<StreamSource> stream) : stream_(std::move(stream)) {}

    ErrorCode AwaitOpen(std::chrono::milliseconds timeout) override { return stream_->AwaitOpen(timeout); }
    const SourceFormat& Format() const override { return stream_->Format(); }
    std::int64_t Frames() const override { return stream_->Frames(); }
    int Bitrate() const override { return stream_->Bitrate(); }
    void AwaitLength(std::chrono::milliseconds timeout) override { stream_->AwaitLength(timeout); }
    void Seek(std::int64_t frame) override { stream_->Seek(frame); }
    std::size_t Read(float* stereo, std::size_t frames) override { return stream_->Read(stereo, frames); }
    std::size_t Available() const override { return stream_->Available(); }
    bool AtEnd() const override { return stream_->AtEnd(); }
    bool WaitFor(std::size_t frames, std::chrono::milliseconds timeout) override {
        return stream_->WaitFor(frames, timeout);
    }

private:
    std::unique_ptr<StreamSource> stream_;
};

std::unique_ptr<FrameSource> OpenBytes(std::unique_ptr<ByteSource> bytes, ErrorCode& error) {
    auto stream = StreamSource::Begin(std::move(bytes));
    error = stream ? ErrorCode::None : ErrorCode::File;
    return stream ? std::make_unique<FileSource>(std::move(stream)) : nullptr;
}

} // namespace

std::unique_ptr<FrameSource> OpenFileSource(const std::string& path, ErrorCode& error) {
    return OpenBytes(MakeFileSource(path), error);
}

std::unique_ptr<FrameSource> OpenHeldSource(HeldFile file, ErrorCode& error) {
    return OpenBytes(MakeHeldSource(std::move(file)), error);
}

} // namespace kalvo::audio
