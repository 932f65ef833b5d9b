#pragma once

#include "audio/AudioLibraryImpl.h"
#include "audio/Limiter.h"

#include <gtest/gtest.h>

#include <functional>

namespace kalvo::test {

using audio::Handle;

/** A sound that is computed instead of read from a file; both sides the same. */
struct Tone {
    int rate = 44100;
    std::int64_t frames = 441000;
    std::function<float(std::int64_t frame)> sample = [](std::int64_t) { return 1.0F; };
};

Tone Constant(float value, std::int64_t frames = 441000);
Tone Sine(double frequency, double amplitude, std::int64_t frames = 441000, int rate = 44100);

/** What a test may do to a sound while it plays: deliver only so many frames for now. */
struct Delivery {
    std::atomic<std::int64_t> until{INT64_MAX};
};

/** A source of Tone under the contract of FrameSource. */
class ToneSource final : public audio::FrameSource {
public:
    ToneSource(Tone tone, std::shared_ptr<Delivery> delivery);

    const audio::SourceFormat& Format() const override { return format_; }
    void Seek(std::int64_t frame) override { next_ = frame; }
    std::size_t Read(float* stereo, std::size_t frames) override;
    std::size_t Available() const override;
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
    OfflineDesk();

    audio::AudioLibrary& Audio() { return library_; }
    Handle Open(const Tone& tone, std::shared_ptr<Delivery> delivery = std::make_shared<Delivery>());
    /** The same, already playing. */
    Handle Play(const Tone& tone);
    /** The left side of the next frames, kDelay frames late as the limiter makes them; the right side in `right`. */
    std::vector<float> Render(std::size_t frames, std::size_t blockFrames = 256);
    std::vector<float> right;
    /** Appends the next frames to `out`. */
    void RenderTo(std::vector<float>& out, std::size_t frames, std::size_t blockFrames = 256);

private:
    Tone tone_; // what the next StreamCreateFile() opens
    std::shared_ptr<Delivery> delivery_;
    audio::AudioLibraryImpl library_;
};

struct DeskTest : ::testing::Test {
    OfflineDesk desk;
    audio::AudioLibrary& library = desk.Audio();
};

/** Frames by which everything comes out later. */
constexpr std::size_t kDelay = audio::Limiter::kDelay;

/** The largest second difference from this frame on: a jump in a low tone shows as its height. */
double LargestJump(const std::vector<float>& samples, std::size_t first = kDelay + 2);
/** Frequency in Hz from the rising zero crossings, those at the rim interpolated. */
double MeasuredFrequency(const std::vector<float>& samples, double rate = 44100);

} // namespace kalvo::test
