#include "audio/AudioLibraryImpl.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <ctime>
#include <memory>
#include <thread>
#include <vector>

// What the mixer costs. "core" is the share of one core while music plays in real time, "realtime" how many times
// faster than that it renders. Targets: two decks with ten bands at most 1.5 % of a core, five voices at most 3 %, a
// callback at most 2 % of its budget on average, play to the first sample at most 25 ms.
namespace {

using namespace kalvo::audio;

constexpr int kRate = 44100;
constexpr std::size_t kBuffer = 1024;

/** Noise without end from a table: costs what a copy costs. */
class NoiseSource final : public FrameSource {
public:
    NoiseSource() {
        format_.sampleRate = kRate;
        format_.channels = 2;
        format_.frames = std::int64_t(1) << 40;
        unsigned state = 1;
        for (float& sample : noise_)
            sample = float(int(state = state * 1664525U + 1013904223U)) / 2147483648.0F * 0.4F;
    }
    const SourceFormat& Format() const override { return format_; }
    void Seek(std::int64_t) override {}
    std::size_t Read(float* stereo, std::size_t frames) override {
        const std::size_t got = std::min(frames, noise_.size() / 2);
        std::copy_n(noise_.begin(), got * 2, stereo);
        return got;
    }
    std::size_t Available() const override { return noise_.size() / 2; }
    bool AtEnd() const override { return false; }
    bool WaitFor(std::size_t, std::chrono::milliseconds) override { return true; }

private:
    SourceFormat format_;
    std::vector<float> noise_ = std::vector<float>(2 * 16384);
};

SourceOpener Noise() {
    return [](const std::string&, ErrorCode&) { return std::make_unique<NoiseSource>(); };
}

void AddBands(AudioLibrary& library, Handle stream, int bands) {
    const float centres[] = {80, 125, 250, 500, 1000, 2000, 4000, 8000, 12000, 16000};
    for (int i = 0; i < bands; ++i) {
        EffectParameters band;
        band.centre = centres[i];
        band.gain = float(i % 2 == 0 ? 4 : -4);
        library.FXSetParameters(library.ChannelSetFX(stream, EffectType::EqualiserBand), band);
    }
}

/** Arguments: voices, bands each, playing frequency, reverberation. */
void OfflineRender(benchmark::State& state) {
    AudioLibraryImpl library(Noise());
    library.Init(Output::Main, kOffline, kRate, int(kBuffer));
    for (int i = 0; i < state.range(0); ++i) {
        const Handle stream = library.StreamCreateFile(Output::Main, "");
        AddBands(library, stream, int(state.range(1)));
        if (state.range(3) != 0) {
            EffectParameters reverb;
            reverb.reverbMix = -12;
            library.FXSetParameters(library.ChannelSetFX(stream, EffectType::Reverb), reverb);
        }
        library.ChannelSetAttributes(stream, int(state.range(2)), kKeepVolume, kKeepPan);
        library.StreamPlay(stream, true);
    }
    std::vector<float> out(2 * kBuffer);
    double frames = 0;
    const std::clock_t begin = std::clock();
    for (auto _ : state) {
        library.Render(Output::Main, out.data(), kBuffer);
        benchmark::DoNotOptimize(out.data());
        frames += double(kBuffer);
    }
    const double seconds =
        double(std::clock() - begin) / CLOCKS_PER_SEC; // the processor's, other programs do not count
    state.counters["core%"] = 100 * seconds * kRate / frames;
    state.counters["realtime"] = frames / kRate / seconds;
}
BENCHMARK(OfflineRender)
    ->ArgNames({"voices", "bands", "Hz", "reverb"})
    ->Args({2, 10, kRate, 0})
    ->Args({2, 10, 46305, 0})
    ->Args({2, 10, 46305, 1})
    ->Args({5, 0, kRate, 0})
    ->Args({5, 10, 46305, 0});

/** The mean load that the library itself reports while the silent device runs two decks for two seconds. */
void CallbackShare(benchmark::State& state) {
    for (auto _ : state) {
        AudioLibraryImpl library(Noise());
        library.Init(Output::Main, kNoSound, kRate, int(kBuffer));
        for (int i = 0; i < 2; ++i) {
            const Handle stream = library.StreamCreateFile(Output::Main, "");
            AddBands(library, stream, 10);
            library.StreamPlay(stream, true);
        }
        std::this_thread::sleep_for(std::chrono::seconds(2));
        OutputInfo info;
        library.GetInfo(Output::Main, info);
        state.counters["budget%"] = 100 * info.load;
    }
}
BENCHMARK(CallbackShare)->Iterations(1)->Unit(benchmark::kMillisecond);

/** From StreamPlay() to the first rendered frame on a running device of 1024 frames (23 ms apart). */
void PlayToFirstSample(benchmark::State& state) {
    AudioLibraryImpl library(Noise());
    library.Init(Output::Main, kNoSound, kRate, int(kBuffer));
    double longest = 0;
    for (auto _ : state) {
        const Handle stream = library.StreamCreateFile(Output::Main, "");
        const auto begin = std::chrono::steady_clock::now();
        library.StreamPlay(stream, true);
        while (library.ChannelGetPosition(stream) == 0)
            std::this_thread::yield();
        const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
        state.SetIterationTime(seconds);
        longest = std::max(longest, seconds);
        library.StreamFree(stream);
        library.DispatchEvents();
    }
    state.counters["longest_ms"] = 1000 * longest;
}
BENCHMARK(PlayToFirstSample)->UseManualTime()->Iterations(100)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
