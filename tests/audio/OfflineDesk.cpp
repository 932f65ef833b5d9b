#include "OfflineDesk.h"

#include <cmath>
#include <numbers>

namespace kalvo::test {

using namespace audio;

Tone Constant(float value, std::int64_t frames) {
    return {44100, frames, [value](std::int64_t) { return value; }};
}

Tone Sine(double frequency, double amplitude, std::int64_t frames, int rate) {
    return {rate, frames, [=](std::int64_t frame) {
                return float(amplitude * std::sin(2 * std::numbers::pi * frequency * double(frame) / rate));
            }};
}

ToneSource::ToneSource(Tone tone, std::shared_ptr<Delivery> delivery)
    : tone_(std::move(tone)), delivery_(std::move(delivery)) {
    format_.sampleRate = tone_.rate;
    format_.channels = 2;
    format_.frames = tone_.frames;
}

std::size_t ToneSource::Available() const {
    return std::size_t(std::max<std::int64_t>(0, std::min(tone_.frames, delivery_->until.load()) - next_));
}

std::size_t ToneSource::Read(float* stereo, std::size_t frames) {
    const std::size_t got = std::min(frames, Available());
    for (std::size_t i = 0; i < got; ++i)
        stereo[2 * i] = stereo[2 * i + 1] = tone_.sample(next_ + std::int64_t(i));
    next_ += std::int64_t(got);
    return got;
}

OfflineDesk::OfflineDesk()
    : library_([this](const std::string&, ErrorCode&) { return std::make_unique<ToneSource>(tone_, delivery_); }) {
    EXPECT_TRUE(library_.Init(Output::Main, kOffline, 44100, 1024));
}

Handle OfflineDesk::Open(const Tone& tone, std::shared_ptr<Delivery> delivery) {
    tone_ = tone;
    delivery_ = std::move(delivery);
    const Handle stream = library_.StreamCreateFile(Output::Main, "tone");
    EXPECT_NE(stream, 0U);
    return stream;
}

Handle OfflineDesk::Play(const Tone& tone) {
    const Handle stream = Open(tone);
    EXPECT_TRUE(library_.StreamPlay(stream, true));
    return stream;
}

std::vector<float> OfflineDesk::Render(std::size_t frames, std::size_t blockFrames) {
    std::vector<float> stereo(2 * frames);
    for (std::size_t done = 0; done < frames; done += blockFrames)
        EXPECT_TRUE(library_.Render(Output::Main, &stereo[2 * done], std::min(blockFrames, frames - done)));
    std::vector<float> left;
    right.clear();
    for (std::size_t i = 0; i < frames; ++i) {
        left.push_back(stereo[2 * i]);
        right.push_back(stereo[2 * i + 1]);
    }
    return left;
}

void OfflineDesk::RenderTo(std::vector<float>& out, std::size_t frames, std::size_t blockFrames) {
    const auto piece = Render(frames, blockFrames);
    out.insert(out.end(), piece.begin(), piece.end());
}

double LargestJump(const std::vector<float>& samples, std::size_t first) {
    double largest = 0;
    for (std::size_t i = first + 2; i < samples.size(); ++i)
        largest =
            std::max(largest, std::fabs(double(samples[i]) - 2 * double(samples[i - 1]) + double(samples[i - 2])));
    return largest;
}

double MeasuredFrequency(const std::vector<float>& samples, double rate) {
    double first = -1;
    double last = -1;
    int periods = -1;
    for (std::size_t i = 1; i < samples.size(); ++i) {
        if (samples[i - 1] < 0 && samples[i] >= 0) {
            last = double(i) - samples[i] / (double(samples[i]) - samples[i - 1]);
            first = first < 0 ? last : first;
            ++periods;
        }
    }
    return periods < 1 ? 0 : periods * rate / (last - first);
}

} // namespace kalvo::test
