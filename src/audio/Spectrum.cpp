#include "audio/Spectrum.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <numbers>
#include <vector>

namespace kalvo::audio {

namespace {

using Line = std::complex<float>;

/** What a transform of one size uses each time, reckoned once: the display asks twenty times a second. */
struct Plan {
    explicit Plan(std::size_t size) : window(size), turns(size / 2) {
        for (std::size_t i = 0; i < size; ++i)
            window[i] = float(0.5 - 0.5 * std::cos(2 * std::numbers::pi * double(i) / double(size)));
        for (std::size_t k = 0; k < turns.size(); ++k)
            turns[k] = std::polar(1.0F, float(-2 * std::numbers::pi * double(k) / double(size)));
    }
    std::vector<float> window; // Hann
    std::vector<Line> turns;   // e^(-2 pi i k / size)
};

// Fast Fourier transform in place, radix 2, decimation in time; the size is a power of two.
void Transform(std::vector<Line>& lines, const std::vector<Line>& turns) {
    const std::size_t size = lines.size();
    for (std::size_t i = 1, mirrored = 0; i < size; ++i) {
        std::size_t bit = size >> 1;
        for (; mirrored & bit; bit >>= 1)
            mirrored ^= bit;
        mirrored ^= bit;
        if (i < mirrored)
            std::swap(lines[i], lines[mirrored]);
    }
    for (std::size_t half = 1; half < size; half *= 2) {
        for (std::size_t start = 0; start < size; start += 2 * half) {
            for (std::size_t k = 0; k < half; ++k) {
                Line& even = lines[start + k];
                Line& odd = lines[start + k + half];
                const Line turned = odd * turns[k * (size / 2 / half)];
                odd = even - turned;
                even += turned;
            }
        }
    }
}

template<std::size_t size>
std::size_t ReadSpectrum(const TapRing& tap, float* values, std::size_t count) {
    static const Plan plan(size);
    const std::size_t written = std::min(count, size / 2);
    std::vector<float> stereo(2 * size);
    tap.ReadNewest(stereo.data(), size);
    if (std::all_of(stereo.begin(), stereo.end(), [](float sample) { return sample == 0; })) {
        std::fill_n(values, written, 0.0F);
        return written;
    }
    std::vector<Line> lines(size);
    for (std::size_t i = 0; i < size; ++i)
        lines[i] = plan.window[i] * 0.5F * (stereo[2 * i] + stereo[2 * i + 1]);
    Transform(lines, plan.turns);
    for (std::size_t i = 0; i < written; ++i) // the window halves the amplitude, the mirrored half takes another half
        values[i] = std::min(1.0F, std::abs(lines[i]) * 4 / float(size));
    return written;
}

} // namespace

std::size_t ReadTap(const TapRing& tap, DataKind kind, float* values, std::size_t count) {
    switch (kind) {
    case DataKind::Samples: {
        const std::size_t frames = std::min(count / 2, TapRing::kMostRead);
        tap.ReadNewest(values, frames);
        return 2 * frames;
    }
    case DataKind::Fft512:
        return ReadSpectrum<512>(tap, values, count);
    case DataKind::Fft1024:
        return ReadSpectrum<1024>(tap, values, count);
    case DataKind::Fft2048:
        return ReadSpectrum<2048>(tap, values, count);
    }
    return 0;
}

} // namespace kalvo::audio
