#pragma once

#include "playback/Mixer.h"

#include <cstddef>
#include <functional>

namespace kalvo {

/**
 * Drives a mixer in its own time instead of the clock's: renders its output in steps and calls the mixer's timers when
 * that much of sound has passed. The layer's main output must be open at audio::kOffline.
 */
class OfflineMix {
public:
    explicit OfflineMix(Mixer& mixer);

    /** Takes interleaved stereo at 44100 Hz; false ends the run. */
    using Sink = std::function<bool(const float* stereo, std::size_t frames)>;

    /** Renders until nothing plays any more. False when the sink or the output gave up. */
    bool Run(const Sink& sink);
    /** Rendered so far. */
    double Seconds() const;

private:
    bool Step(const Sink& sink);

    Mixer& mixer_;
    qint64 milliseconds_ = 0;
    qint64 frames_ = 0;
    qint64 nextFade_ = 0;
};

} // namespace kalvo
