#pragma once

#include "audio/AudioLibrary.h"
#include "audio/TapRing.h"

#include <cstddef>

namespace kalvo::audio {

/**
 * What ChannelGetData() gives of a tap: writes at most `count` values and returns how many. A sine of full scale on
 * both sides shows as 1 at its line.
 */
std::size_t ReadTap(const TapRing& tap, DataKind kind, float* values, std::size_t count);

} // namespace kalvo::audio
