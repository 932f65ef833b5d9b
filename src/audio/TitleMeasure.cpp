#include "audio/TitleMeasure.h"

#include "audio/OpenDecoder.h"
#include "audio/ReadAheadFile.h"

#include <algorithm>
#include <cmath>
#include <ebur128.h>
#include <exception>
#include <memory>
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

TitleMeasures Result(ebur128_state& state, soundtouch::BPMDetect& beats) {
    TitleMeasures measures;
    if (ebur128_loudness_global(&state, &measures.loudness) != EBUR128_SUCCESS || !std::isfinite(measures.loudness))
        measures.loudness = kSilence;
    for (unsigned channel = 0; channel < kChannels; ++channel) {
        double peak = 0;
        ebur128_true_peak(&state, channel, &peak);
        measures.peak = std::max(measures.peak, peak);
    }
    measures.tempo = double(beats.getBpm());
    return measures;
}

std::optional<TitleMeasures> Measure(Decoder& decoder, const std::atomic<bool>& cancelled) {
    const int rate = decoder.Format().sampleRate;
    const std::unique_ptr<ebur128_state, Ebur128Deleter> state(
        ebur128_init(kChannels, unsigned(rate), EBUR128_MODE_I | EBUR128_MODE_TRUE_PEAK));
    if (!state)
        return std::nullopt;
    soundtouch::BPMDetect beats(int(kChannels), rate);
    std::vector<float> piece(kChannels * kPiece);
    std::size_t all = 0;
    for (std::size_t got = 0; decoder.Read(piece.data(), kPiece, got) == ReadResult::Data; all += got) {
        if (cancelled || ebur128_add_frames_float(state.get(), piece.data(), got) != EBUR128_SUCCESS)
            return std::nullopt;
        beats.inputSamples(piece.data(), int(got));
    }
    return all == 0 ? std::nullopt : std::optional(Result(*state, beats));
}

} // namespace

std::optional<TitleMeasures> MeasureTitle(const std::string& path, const std::atomic<bool>& cancelled) try {
    ReadAheadFile file(MakeFileSource(path));
    if (!file.WaitUntilOpen())
        return std::nullopt;
    const std::unique_ptr<Decoder> decoder = OpenDecoder(file, LengthNeed::Soon);
    return decoder == nullptr || decoder->Format().sampleRate <= 0 ? std::nullopt : Measure(*decoder, cancelled);
} catch (const std::exception&) { // no memory, no thread, no such rate
    return std::nullopt;
}

} // namespace kalvo::audio
