#pragma once

#include <cstddef>
#include <utility>

namespace kalvo::audio {

/** Left and right side by side, so that one instruction serves both. */
using StereoPair = double __attribute__((vector_size(16)));

/** y = b0 x + b1 x' + b2 x'' - a1 y' - a2 y''. */
struct BiquadCoefficients {
    double b0 = 1;
    double b1 = 0;
    double b2 = 0;
    double a1 = 0;
    double a2 = 0;

    /**
     * Peaking filter after R. Bristow-Johnson's Audio EQ Cookbook. centre in Hz, bandwidth in semitones between the
     * points of half the gain in dB, gain in dB. The centre is kept below 0.49 of the rate.
     */
    static BiquadCoefficients Peaking(double centre, double bandwidth, double gain, double rate);
};

/** One second-order section for stereo whose coefficients glide to new ones. Used by one thread. */
class Biquad {
public:
    /** Frames that a change takes. */
    static constexpr std::size_t kGlideFrames = 1024;

    /** `flat`: the target passes everything unchanged; the section is skipped once it has got there and rung out. */
    void GlideTo(const BiquadCoefficients& target, bool flat);
    /** At once, with an empty memory. */
    void Set(const BiquadCoefficients& target, bool flat);
    bool Idle() const { return idle_; }
    /** Filters, and its coefficients stand still. */
    bool Steady() const { return !idle_ && glideLeft_ == 0; }

    /** In place. */
    void Process(StereoPair* frames, std::size_t count);

    static constexpr std::size_t kMostInSeries = 5;
    /**
     * The same for up to kMostInSeries steady sections in series, much faster than one after the other: each waits for
     * its own last frame, and while one waits the others work.
     */
    static void ProcessInSeries(Biquad* const* sections, std::size_t sectionCount, StereoPair* frames,
                                std::size_t count);

private:
    void ProcessGliding(StereoPair* frames, std::size_t count);
    template<std::size_t... Section>
    static void Cascade(Biquad* const* sections, StereoPair* frames, std::size_t count,
                        std::index_sequence<Section...> /*indices*/);
    void RestWhenQuiet();

    BiquadCoefficients now_;
    BiquadCoefficients target_;
    BiquadCoefficients step_;
    std::size_t glideLeft_ = 0;
    bool flat_ = true;
    bool idle_ = true;
    StereoPair state1_{0, 0};
    StereoPair state2_{0, 0};
};

} // namespace kalvo::audio
