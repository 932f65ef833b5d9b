#pragma once

#include <chrono>

namespace kalvo {

/** How one value of a meter moves: up at once, down evenly; its peak stands a while and falls slowly. 0 to 1 each. */
class MeterBallistics {
public:
    using Clock = std::chrono::steady_clock;

    /** Per second; of the whole scale. */
    static constexpr float kFall = 1.4F;
    static constexpr float kPeakFall = 0.5F;
    static constexpr std::chrono::milliseconds kPeakHold{1000};

    /** To be told regularly, silence too. */
    void Show(float value, Clock::time_point now);
    float Value() const { return value_; }
    float Peak() const { return peak_; }

private:
    float value_ = 0;
    float peak_ = 0;
    Clock::time_point shownAt_;
    Clock::time_point peakAt_;
};

/** Lights at a value of full scale and stays on for two seconds. */
class ClipLight {
public:
    using Clock = std::chrono::steady_clock;

    static constexpr std::chrono::seconds kHold{2};

    void Show(bool clipped, Clock::time_point now);
    bool IsOn() const { return on_; }

private:
    bool on_ = false;
    Clock::time_point since_;
};

} // namespace kalvo
