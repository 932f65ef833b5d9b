#pragma once

#include <cstddef>

namespace kalvo::audio {

/** How a joint of two titles sounds. Loudness in LUFS, -70 for silence or too little sound to tell. */
struct JointMeasures {
    double before = -70; ///< the first title, up to four seconds before the joint
    double after = -70;  ///< the second, up to four seconds after it
    double lowest = -70; ///< momentary loudness between them
    double gap = 0;      ///< seconds: the longest silence around the joint

    /** LU by which the second title is louder; 0 where one of them is silent. */
    double Jump() const;
    /** LU by which the joint falls below the quieter title; 0 where it does not. */
    double Dip() const;
    bool operator==(const JointMeasures&) const = default;
};

/**
 * Interleaved stereo at `rate` Hz, the joint between the frames `begin` and `end`. Any thread, throws nothing; empty
 * sound gives the defaults.
 */
JointMeasures MeasureJoint(const float* stereo, std::size_t frames, int rate, std::size_t begin, std::size_t end);

} // namespace kalvo::audio
