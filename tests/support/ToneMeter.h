#pragma once

#include <cstddef>
#include <vector>

namespace kalvo::test {

/**
 * Measures known sines in a recording by least squares: how loud each is at a moment, and what is left when they are
 * taken away. What is left is what nobody asked for: clicks, gaps, jumps of the phase, distortion.
 * Frequencies in Hz, times in seconds from the recording's start, levels as amplitudes 0..1.
 */
class ToneMeter {
public:
    ToneMeter(std::vector<float> mono, int sampleRate) : samples_(std::move(mono)), rate_(sampleRate) {}

    double Seconds() const { return static_cast<double>(samples_.size()) / rate_; }

    /** Amplitude of each tone at a moment (20 ms around it); the tones are fitted together. */
    std::vector<double> Levels(const std::vector<double>& frequencies, double second) const;

    /** First moment at or after `from`, to 5 ms, at which the tone of this frequency reaches the level; -1 if never. */
    double Onset(const std::vector<double>& frequencies, std::size_t which, double level, double from = 0) const;

    /** Highest peak in dBFS between the times that the tones do not explain; their levels may glide. */
    double ResidualPeak(const std::vector<double>& frequencies, double begin, double end) const;

    /**
     * Highest peak in dBFS between the times of what lies above 5 kHz. Where there are only tones far below, that is
     * clicks: jumps and kinks, also while a tone begins or ends so quickly that ResidualPeak cannot follow it.
     */
    double TreblePeak(double begin, double end) const;

    /** Longest time in seconds between the times during which every sample stays below the level. */
    double LongestSilence(double level, double begin, double end) const;

private:
    struct Fit {
        std::vector<double> levels;
        double residualPeak = 0;
    };
    Fit FitTones(const std::vector<double>& frequencies, std::size_t first, std::size_t count) const;
    std::size_t Frame(double second) const;

    std::vector<float> samples_;
    int rate_;
};

} // namespace kalvo::test
