#pragma once

#include <span>

namespace kalvo {

/**
 * The bars of a spectrum display from FFT magnitudes: equally wide in octaves from 40 Hz to 16 kHz, 60 dB high, 0 to 1
 * each. As music falls off towards the treble, a bar counts 3 dB more for each octave above 1 kHz and less below.
 * lines: magnitudes 0 to 1 from 0 Hz up to half the sample rate (Hz); none, or no rate, gives silence.
 */
void FillSpectrumBands(std::span<const float> lines, int sampleRate, std::span<float> bands);

} // namespace kalvo
