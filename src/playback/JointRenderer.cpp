#include "playback/JointRenderer.h"

#include "audio/ByteSink.h"
#include "audio/SoundFileWriter.h"
#include "playback/OfflineMix.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>
#include <vector>

namespace kalvo {

namespace {

constexpr int kJointRate = 44100;
constexpr double kSlack = 3;        ///< s: the plan may be off by so much
constexpr double kLongestFade = 60; ///< s; a joint that has not come to its end by then is cut

std::size_t Frames(double seconds) {
    return static_cast<std::size_t>(std::max(0.0, seconds) * kJointRate);
}

/** A file in memory, shared with whoever will play it. */
class MemorySink final : public audio::ByteSink {
public:
    explicit MemorySink(std::shared_ptr<std::vector<std::byte>> bytes) : bytes_(std::move(bytes)) {}

    std::int64_t Size() const override { return static_cast<std::int64_t>(bytes_->size()); }
    audio::EncodeError WriteAt(std::int64_t position, const void* bytes, std::size_t count) override {
        const auto from = static_cast<std::size_t>(position);
        bytes_->resize(std::max(bytes_->size(), from + count));
        std::memcpy(bytes_->data() + from, bytes, count);
        return audio::EncodeError::None;
    }
    audio::EncodeError Sync() override { return audio::EncodeError::None; }
    void Discard() override { bytes_->clear(); }

private:
    std::shared_ptr<std::vector<std::byte>> bytes_;
};

audio::HeldFile WaveFileOf(const std::vector<float>& stereo) {
    auto bytes = std::make_shared<std::vector<std::byte>>();
    audio::EncodeError error{};
    const auto writer =
        audio::SoundFileWriter::Create(std::make_unique<MemorySink>(bytes), audio::EncodeSettings(), kJointRate, error);
    const bool isWritten = writer && writer->Write(stereo.data(), stereo.size() / 2) == audio::EncodeError::None &&
                           writer->Close() == audio::EncodeError::None;
    return isWritten ? bytes : audio::HeldFile();
}

std::shared_ptr<const Waveform> WaveOf(const std::vector<float>& stereo) {
    auto wave = std::make_shared<Waveform>();
    const std::size_t frames = stereo.size() / 2;
    std::size_t frame = 0;
    for (int column = 0; column < Waveform::kColumns; ++column) {
        const std::size_t end = (static_cast<std::size_t>(column) + 1) * frames / Waveform::kColumns;
        double peak = 0;
        double sum = 0;
        const auto count = static_cast<double>(std::max<std::size_t>(1, end - frame));
        for (; frame < end; ++frame) {
            const double left = std::abs(double(stereo[2 * frame]));
            const double right = std::abs(double(stereo[2 * frame + 1]));
            peak = std::max({peak, left, right});
            sum += (left * left + right * right) / 2;
        }
        const auto scaled = [](double value) {
            return static_cast<std::uint8_t>(std::lround(255 * std::clamp(value, 0.0, 1.0)));
        };
        wave->columns[static_cast<std::size_t>(column)] = {scaled(peak), scaled(std::sqrt(sum / count))};
    }
    wave->known = Waveform::kColumns;
    return wave;
}

/** The sound so far, and where in it the joint lies; tells when there is enough. */
class Take {
public:
    Take(RehearsalDesk& desk, const JointMargins& margins) : desk_(desk), margins_(margins) {
        const auto begin = [this] { begin_ = std::min(begin_, Count()); };
        QObject::connect(&desk.mixer, &Mixer::TitleStarted, begin);
        QObject::connect(&desk.mixer, &Mixer::HandOverBegan, begin);
    }

    /** False: enough. */
    bool Add(const float* stereo, std::size_t frames) {
        stereo_.insert(stereo_.end(), stereo, stereo + 2 * frames);
        if (begin_ == kNever)
            return Count() < Frames(margins_.before + kSlack + kLongestFade);
        if (end_ == kNever && desk_.mixer.State().fadeStep == 0)
            end_ = Count();
        return Count() < std::min(end_, begin_ + Frames(kLongestFade)) + Frames(margins_.after);
    }

    RenderedJoint Result() const {
        RenderedJoint joint;
        if (begin_ == kNever)
            return joint;
        const std::size_t end = std::min(end_, Count());
        joint.sound = WaveFileOf(stereo_);
        joint.wave = WaveOf(stereo_);
        joint.begin = static_cast<double>(begin_) / kJointRate;
        joint.end = static_cast<double>(end) / kJointRate;
        joint.length = static_cast<double>(Count()) / kJointRate;
        joint.measures = audio::MeasureJoint(stereo_.data(), Count(), kJointRate, begin_, end);
        return joint;
    }

private:
    static constexpr std::size_t kNever = static_cast<std::size_t>(-1) / 4;
    std::size_t Count() const { return stereo_.size() / 2; }

    RehearsalDesk& desk_;
    JointMargins margins_;
    std::vector<float> stereo_;
    std::size_t begin_ = kNever;
    std::size_t end_ = kNever;
};

} // namespace

RenderedJoint RenderJoint(const Joint& joint, const RehearsalSettings& settings, const JointMargins& margins,
                          std::unique_ptr<audio::AudioLibrary> library, const std::atomic<bool>& cancelled) {
    if (library == nullptr)
        return {};
    RehearsalDesk desk(std::move(library), settings);
    if (!desk.IsOpen())
        return {};
    desk.Begin(joint.before, margins.before);
    OfflineMix mix(desk.mixer);
    Take take(desk, margins);
    mix.Run([&](const float* stereo, std::size_t frames) { return !cancelled && take.Add(stereo, frames); });
    return cancelled ? RenderedJoint() : take.Result();
}

} // namespace kalvo
