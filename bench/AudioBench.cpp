#include "audio/AudioLibraryImpl.h"
#include "audio/SoundFileWriter.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <ctime>
#include <filesystem>
#include <memory>
#include <string>
#include <thread>
#include <vector>

// What the mixer costs. "core" is the share of one core while music plays in real time, "realtime" how many times
// faster than that it renders.
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
    state.SetLabel(state.range(0) == 2 ? "target 1.5 % of a core, 65 times real time" : "target 3 % of a core");
}
BENCHMARK(OfflineRender)
    ->ArgNames({"voices", "bands", "Hz", "reverb"})
    ->Args({2, 10, kRate, 0})
    ->Args({2, 10, 46305, 0})
    ->Args({2, 10, 46305, 1})
    ->Args({5, 0, kRate, 0})
    ->Args({5, 10, kRate, 0})
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
    state.SetLabel("target 2 % of the callback's time");
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
    state.SetLabel("target 25 ms, bounded by the buffer");
}
BENCHMARK(PlayToFirstSample)->UseManualTime()->Iterations(100)->Unit(benchmark::kMillisecond);

constexpr int kSeconds = 300;

/** A file of this length, encoded: a tone in its second half, silence before. */
std::string HalfSilentTitle(const std::filesystem::path& folder, EncodeFormat format) {
    std::string path = folder / (format == EncodeFormat::Mp3 ? "titel.mp3" : "titel.ogg");
    EncodeError error{};
    EncodeSettings settings;
    settings.format = format;
    const auto file = SoundFileWriter::Create(CreateFileSink(path, error), settings, kRate, error);
    std::vector<float> second(2 * kRate);
    for (int at = 0; file && at < kSeconds; ++at) {
        for (std::size_t i = 0; at >= kSeconds / 2 && i < second.size(); ++i)
            second[i] = float(0.4 * std::sin(double(i / 2) * 440 * 6.283185 / kRate));
        file->Write(second.data(), kRate);
    }
    return file && file->Close() == EncodeError::None ? path : std::string();
}

/** From ChannelSetPosition() to the first block that holds what is heard there, without the wait of a device. */
void SeekToFirstSample(benchmark::State& state) {
    const std::filesystem::path folder = std::filesystem::temp_directory_path() / "kalvo-bench-seek";
    std::filesystem::create_directory(folder);
    AudioLibraryImpl library;
    library.Init(Output::Main, kOffline, kRate, int(kBuffer));
    const Handle stream = library.StreamCreateFile(Output::Main, HalfSilentTitle(folder, EncodeFormat(state.range(0))));
    if (stream == 0) {
        state.SkipWithError("no title");
        return;
    }
    library.StreamPlay(stream, true);
    std::vector<float> out(2 * kBuffer);
    const auto isLoud = [&out] { return std::any_of(out.begin(), out.end(), [](float s) { return s > 0.01F; }); };
    int second = kSeconds / 2;
    for (auto _ : state) {
        state.PauseTiming();
        library.ChannelSetPosition(stream, library.ChannelSeconds2Bytes(stream, 1));
        do
            library.Render(Output::Main, out.data(), kBuffer);
        while (isLoud());
        second = second > kSeconds - 30 ? kSeconds / 2 + 1 : second + 13;
        const std::uint64_t place = library.ChannelSeconds2Bytes(stream, second);
        state.ResumeTiming();
        library.ChannelSetPosition(stream, place);
        do
            library.Render(Output::Main, out.data(), kBuffer);
        while (!isLoud());
    }
    state.SetLabel("target 20 ms");
    std::filesystem::remove_all(folder);
}
BENCHMARK(SeekToFirstSample)
    ->ArgName("format")
    ->Arg(int(EncodeFormat::Mp3))
    ->Arg(int(EncodeFormat::Ogg))
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
