#pragma once

#include "audio/AudioLibraryImpl.h"
#include "audio/Limiter.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <numbers>

namespace kalvo::test {

using audio::Handle;

/** A sound that is computed instead of read from a file; both sides the same. */
struct Tone {
    int rate = 44100;
    std::int64_t frames = 441000;
    std::function<float(std::int64_t frame)> sample = [](std::int64_t) { return 1.0F; };
};

inline Tone Constant(float value, std::int64_t frames = 441000) {
    return {44100, frames, [value](std::int64_t) { return value; }};
}
inline Tone Sine(double frequency, double amplitude, std::int64_t frames = 441000, int rate = 44100) {
    return {rate, frames, [=](std::int64_t frame) {
                return float(amplitude * std::sin(2 * std::numbers::pi * frequency * double(frame) / rate));
            }};
}

/** What a test may do to a sound: let its file answer late or never, deliver only so many frames for now. */
struct Delivery {
    audio::ErrorCode opening = audio::ErrorCode::None;
    std::atomic<std::int64_t> until{INT64_MAX};
};

/** A source of Tone under the contract of FrameSource. */
class ToneSource final : public audio::FrameSource {
public:
    ToneSource(Tone tone, std::shared_ptr<Delivery> delivery) : tone_(std::move(tone)), delivery_(std::move(delivery)) {
        format_.sampleRate = tone_.rate;
        format_.channels = 2;
        format_.frames = tone_.frames;
    }

    audio::ErrorCode AwaitOpen(std::chrono::milliseconds) override { return delivery_->opening; }
    const audio::SourceFormat& Format() const override { return format_; }
    void Seek(std::int64_t frame) override { next_ = frame; }
    std::size_t Read(float* stereo, std::size_t frames) override {
        const std::size_t got = std::min(frames, Available());
        for (std::size_t i = 0; i < got; ++i)
            stereo[2 * i] = stereo[2 * i + 1] = tone_.sample(next_ + std::int64_t(i));
        next_ += std::int64_t(got);
        return got;
    }
    std::size_t Available() const override {
        return std::size_t(std::max<std::int64_t>(0, std::min(tone_.frames, delivery_->until.load()) - next_));
    }
    bool AtEnd() const override { return next_ >= tone_.frames; }
    bool WaitFor(std::size_t, std::chrono::milliseconds) override { return true; }

private:
    Tone tone_;
    std::shared_ptr<Delivery> delivery_;
    audio::SourceFormat format_;
    std::atomic<std::int64_t> next_{0};
};

/** The whole library on its offline output, playing tones. */
class OfflineDesk {
public:
    OfflineDesk() { EXPECT_TRUE(library_.Init(audio::Output::Main, audio::kOffline, 44100, 1024)); }

    audio::AudioLibrary& Audio() { return library_; }
    Handle Open(const Tone& tone, std::shared_ptr<Delivery> delivery = std::make_shared<Delivery>()) {
        tone_ = tone;
        delivery_ = std::move(delivery);
        const Handle stream = library_.StreamCreateFile(audio::Output::Main, "tone");
        EXPECT_NE(stream, 0U);
        return stream;
    }
    /** The same, already playing. */
    Handle Play(const Tone& tone) {
        const Handle stream = Open(tone);
        EXPECT_TRUE(library_.StreamPlay(stream, true));
        return stream;
    }
    /** The left side of the next frames, kDelay frames late as the limiter makes them; the right side in `right`. */
    std::vector<float> Render(std::size_t frames, std::size_t blockFrames = 256) {
        std::vector<float> stereo(2 * frames);
        for (std::size_t done = 0; done < frames; done += blockFrames)
            EXPECT_TRUE(library_.Render(audio::Output::Main, &stereo[2 * done], std::min(blockFrames, frames - done)));
        std::vector<float> left;
        right.clear();
        for (std::size_t i = 0; i < frames; ++i) {
            left.push_back(stereo[2 * i]);
            right.push_back(stereo[2 * i + 1]);
        }
        return left;
    }
    std::vector<float> right;
    /** Appends the next frames to `out`. */
    void RenderTo(std::vector<float>& out, std::size_t frames, std::size_t blockFrames = 256) {
        const auto piece = Render(frames, blockFrames);
        out.insert(out.end(), piece.begin(), piece.end());
    }

private:
    Tone tone_; // what the next StreamCreateFile() opens
    std::shared_ptr<Delivery> delivery_;
    audio::AudioLibraryImpl library_{
        [this](const std::string&, audio::ErrorCode&) { return std::make_unique<ToneSource>(tone_, delivery_); }};
};

struct DeskTest : ::testing::Test {
    OfflineDesk desk;
    audio::AudioLibrary& library = desk.Audio();
};

/** Frames by which everything comes out later. */
constexpr std::size_t kDelay = audio::Limiter::kDelay;

/** The largest second difference from this frame on: a jump in a low tone shows as its height. */
inline double LargestJump(const std::vector<float>& samples, std::size_t first = kDelay + 2) {
    double largest = 0;
    for (std::size_t i = first + 2; i < samples.size(); ++i)
        largest =
            std::max(largest, std::fabs(double(samples[i]) - 2 * double(samples[i - 1]) + double(samples[i - 2])));
    return largest;
}
/** Frequency in Hz from the rising zero crossings, those at the rim interpolated. */
inline double MeasuredFrequency(const std::vector<float>& samples) {
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
    return periods < 1 ? 0 : periods * 44100 / (last - first);
}

} // namespace kalvo::test
