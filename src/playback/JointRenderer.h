#pragma once

#include "audio/AudioTypes.h"
#include "audio/JointMeasure.h"
#include "base/Waveform.h"
#include "playback/RehearsalPlan.h"

#include <atomic>
#include <memory>

namespace kalvo {

/** How much is heard around a joint, in seconds. */
struct JointMargins {
    int before = 6;
    int after = 6;
    bool operator==(const JointMargins&) const = default;
};

/** A joint as it will be heard. */
struct RenderedJoint {
    audio::HeldFile sound; ///< a WAV file; null: the joint could not be rendered
    std::shared_ptr<const Waveform> wave;
    double begin = 0; ///< second at which the next title begins
    double end = 0;   ///< and at which the fader has arrived
    double length = 0;
    audio::JointMeasures measures;
};

/**
 * Plays one joint through a desk of its own, many times faster than it will sound. Empty when it was cancelled, or when
 * no next title began. The library is one of its own, too. Any thread.
 */
RenderedJoint RenderJoint(const Joint& joint, const RehearsalSettings& settings, const JointMargins& margins,
                          std::unique_ptr<audio::AudioLibrary> library, const std::atomic<bool>& cancelled);

} // namespace kalvo
