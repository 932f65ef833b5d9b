#pragma once

#include <cstddef>

namespace kalvo::audio {

/** Frames that voices and effects process at a time; also the length of every fade. */
constexpr std::size_t kBlockFrames = 256;

} // namespace kalvo::audio
