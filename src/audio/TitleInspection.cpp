#include "audio/TitleInspection.h"

#include "audio/OpenDecoder.h"
#include "audio/ReadAheadFile.h"
#include "audio/SoundFaults.h"

#include <algorithm>
#include <cmath>
#include <ebur128.h>
#include <exception>
#include <memory>
#include <numeric>
#include <soundtouch/BPMDetect.h>
#include <vector>

namespace kalvo::audio {

namespace {

constexpr std::size_t kPiece = 4096; // frames
constexpr unsigned kChannels = 2;
constexpr double kSilence = -70; // LUFS: nothing below counts

struct Ebur128Deleter {
    void operator()(ebur128_state* state) const { ebur128_destroy(&state); }
};

/** Beats per minute by the middle distance between two neighbouring beats; 0 without beats. */
double BeatRate(soundtouch::BPMDetect& beats) {
    std::vector<float> at(std::size_t(beats.getBeats(nullptr, nullptr, 0))); // s
    std::vector<float> strengths(at.size());
    beats.getBeats(at.data(), strengths.data(), int(at.size()));
    std::adjacent_difference(at.begin(), at.end(), at.begin());
    const auto first = at.begin() + (at.empty() ? 0 : 1);
    const auto middle = first + std::distance(first, at.end()) / 2;
    std::nth_element(first, middle, at.end());
    return middle == at.end() || *middle <= 0 ? 0 : 60 / double(*middle);
}

/** The library takes every third beat of a fast title for its tempo; the beats that it found tell. */
double Tempo(soundtouch::BPMDetect& beats) {
    constexpr double slowest = 200.0 / 3;
    constexpr double tolerance = 0.035;
    const auto tempo = double(beats.getBpm());
    const bool third = tempo < slowest && std::abs(BeatRate(beats) / (3 * tempo) - 1) < tolerance;
    return third ? 3 * tempo : tempo;
}

TitleMeasures Result(ebur128_state& state, soundtouch::BPMDetect& beats) {
    TitleMeasures measures;
    if (ebur128_loudness_global(&state, &measures.loudness) != EBUR128_SUCCESS || !std::isfinite(measures.loudness))
        measures.loudness = kSilence;
    for (unsigned channel = 0; channel < kChannels; ++channel) {
        double peak = 0;
        ebur128_true_peak(&state, channel, &peak);
        measures.peak = std::max(measures.peak, peak);
    }
    measures.tempo = Tempo(beats);
    return measures;
}

std::optional<TitleInspection> Inspect(Decoder& decoder, const std::atomic<bool>& cancelled) {
    const int rate = decoder.Format().sampleRate;
    TitleInspection found;
    const std::unique_ptr<ebur128_state, Ebur128Deleter> state(
        ebur128_init(kChannels, unsigned(rate), EBUR128_MODE_I | EBUR128_MODE_TRUE_PEAK));
    if (!state)
        return found;
    soundtouch::BPMDetect beats(int(kChannels), rate);
    SoundFaults faults;
    std::vector<float> piece(kChannels * kPiece);
    std::size_t all = 0;
    ReadResult result = ReadResult::Data;
    for (std::size_t got = 0; (result = decoder.Read(piece.data(), kPiece, got)) == ReadResult::Data; all += got) {
        if (cancelled)
            return std::nullopt;
        ebur128_add_frames_float(state.get(), piece.data(), got);
        beats.inputSamples(piece.data(), int(got));
        faults.Take(piece.data(), got);
    }
    if (all == 0)
        return found;
    faults.Report(found, rate);
    const SourceFormat& format = decoder.Format();
    found.decoded = double(all) / rate;
    found.told = double(format.toldFrames > 0 ? format.toldFrames : format.estimated ? 0 : format.frames) / rate;
    found.broken = result == ReadResult::Broken;
    found.measures = Result(*state, beats);
    return found;
}

} // namespace

std::optional<TitleInspection> InspectTitle(const std::string& path, const std::atomic<bool>& cancelled) try {
    ReadAheadFile file(MakeFileSource(path));
    if (!file.WaitUntilOpen())
        return TitleInspection();
    const std::unique_ptr<Decoder> decoder = OpenDecoder(file, LengthNeed::Soon);
    if (decoder == nullptr || decoder->Format().sampleRate <= 0)
        return TitleInspection();
    return Inspect(*decoder, cancelled);
} catch (const std::exception&) { // no memory, no thread, no such rate
    return TitleInspection();
}

} // namespace kalvo::audio
