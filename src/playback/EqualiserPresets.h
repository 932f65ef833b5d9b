#pragma once

#include "playback/EqualiserSettings.h"

#include <QString>

#include <span>

namespace kalvo {

/** A setting of the ten bands that can be chosen by name; it leaves the reverb alone. */
struct EqualiserPreset {
    const char16_t* name;
    std::array<int, kEqualiserBands> bands; ///< positions, see EqualiserSettings
};

namespace EqualiserPresets {

/** The first one is flat. */
std::span<const EqualiserPreset> All();
/** Place of the preset that these bands are, -1 when they are none. */
int Find(const std::array<int, kEqualiserBands>& bands);

} // namespace EqualiserPresets

} // namespace kalvo
