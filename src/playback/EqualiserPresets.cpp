#include "playback/EqualiserPresets.h"

#include <algorithm>

namespace kalvo::EqualiserPresets {

namespace {

// Centres: 80, 125, 250, 500 Hz, 1, 2, 4, 8, 12, 16 kHz. None lifts everything: that would be a matter of volume.
constexpr std::array<EqualiserPreset, 9> presets{{
    {u"Neutral", {10, 10, 10, 10, 10, 10, 10, 10, 10, 10}},
    {u"Bass", {14, 14, 12, 10, 10, 10, 10, 10, 10, 10}},
    {u"Höhen", {10, 10, 10, 10, 10, 11, 12, 13, 14, 14}},
    {u"Tanzfläche", {14, 13, 11, 9, 9, 10, 11, 12, 12, 12}},
    {u"Rock", {13, 12, 11, 9, 9, 10, 12, 13, 13, 12}},
    {u"Stimme", {6, 7, 9, 11, 12, 13, 12, 10, 9, 8}},
    {u"Leise gehört", {14, 13, 11, 10, 9, 10, 11, 12, 13, 13}},
    {u"Kleine Lautsprecher", {5, 9, 13, 12, 10, 10, 11, 12, 11, 10}},
    {u"Später Abend", {6, 7, 9, 10, 10, 10, 9, 8, 7, 6}},
}};

} // namespace

std::span<const EqualiserPreset> All() {
    return presets;
}

int Find(const std::array<int, kEqualiserBands>& bands) {
    const auto* found = std::find_if(presets.begin(), presets.end(),
                                     [&bands](const EqualiserPreset& preset) { return preset.bands == bands; });
    return found == presets.end() ? -1 : static_cast<int>(found - presets.begin());
}

} // namespace kalvo::EqualiserPresets
