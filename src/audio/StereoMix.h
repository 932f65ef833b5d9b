#pragma once

#include <cstddef>
#include <vector>

namespace kalvo::audio {

/**
 * Brings any number of channels to two: one goes to both sides at full level, two stay, more are mixed with centre and
 * surround at -3 dB and without the low-frequency channel, scaled so that no full-scale input can clip.
 */
class StereoMix {
public:
    /** Order of the channels from three on. */
    enum class Order {
        Wave,  ///< left, right, centre, low frequency, surround left, surround right
        Vorbis ///< left, centre, right, surround left, surround right, low frequency
    };

    StereoMix(int channels, Order order);

    /** Frame by frame: channels values each. */
    void MixInterleaved(const float* input, std::size_t frames, float* stereo) const;
    /** One array per channel. */
    void MixPlanes(const float* const* planes, std::size_t frames, float* stereo) const;

private:
    struct Share {
        float left;
        float right;
    };
    std::vector<Share> shares_; // of each channel
};

} // namespace kalvo::audio
