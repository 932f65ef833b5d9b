#include "audio/StereoMix.h"

#include <algorithm>
#include <string_view>

namespace kalvo::audio {

namespace {

constexpr float kMinus3dB = 0.70710678F;

/** L R left and right, C centre, l r surround, F low frequency, S rear centre. */
std::string_view Layout(int channels, StereoMix::Order order) {
    constexpr std::string_view kWave[] = {"C", "LR", "LRC", "LRlr", "LRClr", "LRCFlr", "LRCFSlr", "LRCFlrlr"};
    constexpr std::string_view kVorbis[] = {"C", "LR", "LCR", "LRlr", "LCRlr", "LCRlrF", "LCRlrSF", "LCRlrlrF"};
    if (channels < 1 || channels > 8)
        return {};
    return (order == StereoMix::Order::Wave ? kWave : kVorbis)[channels - 1];
}

} // namespace

StereoMix::StereoMix(int channels, Order order) {
    const std::string_view layout = Layout(channels, order);
    for (int channel = 0; channel < channels; ++channel) {
        const auto index = static_cast<std::size_t>(channel);
        const char role = index < layout.size() ? layout[index] : (channel % 2 == 0 ? 'L' : 'R');
        switch (role) {
        case 'L':
            shares_.push_back({1, 0});
            break;
        case 'R':
            shares_.push_back({0, 1});
            break;
        case 'l':
            shares_.push_back({kMinus3dB, 0});
            break;
        case 'r':
            shares_.push_back({0, kMinus3dB});
            break;
        case 'F':
            shares_.push_back({0, 0});
            break;
        default:
            shares_.push_back({kMinus3dB, kMinus3dB});
        }
    }
    Share sum{0, 0};
    for (const Share& share : shares_)
        sum = {sum.left + share.left, sum.right + share.right};
    const float scale = 1.0F / std::max({sum.left, sum.right, kMinus3dB});
    for (Share& share : shares_)
        share = {share.left * scale, share.right * scale};
}

void StereoMix::MixInterleaved(const float* input, std::size_t frames, float* stereo) const {
    for (std::size_t frame = 0; frame < frames; ++frame, stereo += 2) {
        Share sum{0, 0};
        for (const Share& share : shares_) {
            const float value = *input++;
            sum = {sum.left + share.left * value, sum.right + share.right * value};
        }
        stereo[0] = sum.left;
        stereo[1] = sum.right;
    }
}

void StereoMix::MixPlanes(const float* const* planes, std::size_t frames, float* stereo) const {
    std::fill_n(stereo, frames * 2, 0.0F);
    for (std::size_t channel = 0; channel < shares_.size(); ++channel) {
        const Share share = shares_[channel];
        const float* const plane = planes[channel];
        for (std::size_t frame = 0; frame < frames; ++frame) {
            stereo[frame * 2] += share.left * plane[frame];
            stereo[frame * 2 + 1] += share.right * plane[frame];
        }
    }
}

} // namespace kalvo::audio
