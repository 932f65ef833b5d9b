#pragma once

#include <cstdint>

namespace kalvo::audio {

/** A stream, effect, sync or recording; 0 = none. Handles are never reused within a run. */
using Handle = std::uint32_t;

/** The two buses never share a stream. */
enum class Output : std::uint8_t { Main, Headphones };

} // namespace kalvo::audio
