#include "playback/WaveformScan.h"

#include "audio/OpenDecoder.h"

#include <QFile>

#include <algorithm>
#include <cmath>

namespace kalvo {

namespace {

constexpr std::size_t kPieceFrames = 8192;
constexpr int kStepSeconds = 30;

std::uint8_t Scaled(double value) {
    return static_cast<std::uint8_t>(std::lround(255 * std::clamp(value, 0.0, 1.0)));
}

/** The frame at which a column ends. */
std::int64_t EndOf(int column, std::int64_t frames) {
    return (column + 1) * frames / Waveform::kColumns;
}

} // namespace

WaveformScan::WaveformScan(const QString& path)
    : file_(audio::MakeFileSource(QFile::encodeName(path).toStdString())), piece_(2 * kPieceFrames) {}

WaveformScan::~WaveformScan() = default;

void WaveformScan::Cancel() noexcept {
    file_.Cancel();
}

WaveformScan::State WaveformScan::Open() {
    if (!file_.WaitUntilOpen())
        return State::Broken;
    decoder_ = audio::OpenDecoder(file_);
    if (!decoder_ || decoder_->Format().frames <= 0 || decoder_->Format().sampleRate <= 0)
        return State::Broken;
    columnEnd_ = EndOf(0, decoder_->Format().frames);
    return State::Running;
}

WaveformScan::State WaveformScan::Step() {
    if (!decoder_ && Open() == State::Broken)
        return State::Broken;
    const std::int64_t until = frame_ + std::int64_t(kStepSeconds) * decoder_->Format().sampleRate;
    while (frame_ < until) {
        std::size_t got = 0;
        const audio::ReadResult result = decoder_->Read(piece_.data(), kPieceFrames, got);
        if (result == audio::ReadResult::Broken)
            return State::Broken;
        if (result == audio::ReadResult::End) {
            EndColumn();
            // What a decoder leaves out at the very end is no sound.
            const bool whole = waveform_.known >= Waveform::kColumns * 98 / 100;
            waveform_.known = whole ? Waveform::kColumns : waveform_.known;
            return whole ? State::Complete : State::Broken;
        }
        Take(piece_.data(), got);
    }
    return State::Running;
}

void WaveformScan::Take(const float* stereo, std::size_t frames) {
    for (std::size_t i = 0; i < frames; ++i, ++frame_) {
        while (frame_ >= columnEnd_ && waveform_.known < Waveform::kColumns)
            EndColumn();
        const float left = stereo[2 * i];
        const float right = stereo[2 * i + 1];
        peak_ = std::max({peak_, std::abs(left), std::abs(right)});
        squares_ += (double(left) * left + double(right) * right) / 2;
        ++frames_;
    }
}

void WaveformScan::EndColumn() {
    if (waveform_.known == Waveform::kColumns)
        return;
    Waveform::Column& column = waveform_.columns[std::size_t(waveform_.known)];
    column = {Scaled(peak_), Scaled(frames_ > 0 ? std::sqrt(squares_ / double(frames_)) : 0)};
    ++waveform_.known;
    columnEnd_ = EndOf(waveform_.known, decoder_->Format().frames);
    peak_ = 0;
    squares_ = 0;
    frames_ = 0;
}

} // namespace kalvo
