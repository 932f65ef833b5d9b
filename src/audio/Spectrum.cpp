#include "audio/Spectrum.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <numbers>
#include <vector>

namespace kalvo::audio {

namespace {

using Line = std::complex<float>;

// Fast Fourier transform in place, radix 2, decimation in time; the size is a power of two.
void Transform(std::vector<Line>& lines) {
    const std::size_t size = lines.size();
    for (std::size_t i = 1, mirrored = 0; i < size; ++i) {
        std::size_t bit = size >> 1;
        for (; mirrored & bit; bit >>= 1)
            mirrored ^= bit;
        mirrored ^= bit;
        if (i < mirrored)
            std::swap(lines[i], lines[mirrored]);
    }
    for (std::size_t span = 2; span <= size; span <<= 1) {
        for (std::size_t k = 0; k < span / 2; ++k) {
            const auto angle = float(-2 * std::numbers::pi * double(k) / double(span));
            const Line turn = std::polar(1.0F, angle);
            for (std::size_t start = k; start < size; start += span) {
                const Line odd = lines[start + span / 2] * turn;
                lines[start + span / 2] = lines[start] - odd;
                lines[start] += odd;
            }
        }
    }
}

std::size_t ReadSpectrum(const TapRing& tap, std::size_t size, float* values, std::size_t count) {
    std::vector<float> stereo(2 * size);
    tap.ReadNewest(stereo.data(), size);
    std::vector<Line> lines(size);
    for (std::size_t i = 0; i < size; ++i) {
        const auto window = float(0.5 - 0.5 * std::cos(2 * std::numbers::pi * double(i) / double(size)));
        lines[i] = window * 0.5F * (stereo[2 * i] + stereo[2 * i + 1]);
    }
    Transform(lines);
    const std::size_t written = std::min(count, size / 2);
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
        return ReadSpectrum(tap, 512, values, count);
    case DataKind::Fft1024:
        return ReadSpectrum(tap, 1024, values, count);
    case DataKind::Fft2048:
        return ReadSpectrum(tap, 2048, values, count);
    }
    return 0;
}

} // namespace kalvo::audio
