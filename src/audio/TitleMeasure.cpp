#include "audio/TitleMeasure.h"

#include "audio/TitleInspection.h"

namespace kalvo::audio {

std::optional<TitleMeasures> MeasureTitle(const std::string& path, const std::atomic<bool>& cancelled) {
    const std::optional<TitleInspection> found = InspectTitle(path, cancelled);
    return found && found->decoded > 0 ? std::optional(found->measures) : std::nullopt;
}

} // namespace kalvo::audio
