#include "playback/StandstillWatch.h"

#include <utility>

namespace kalvo {

namespace {

/** A title that has only just come to be heard has not moved yet. */
bool HasMoved(const DeskPulse& before, const DeskPulse& now) {
    for (std::size_t i = 0; i < now.positions.size(); ++i) {
        const std::optional<double>& position = now.positions.at(i);
        if (position && before.positions.at(i) && *position != *before.positions.at(i)) {
            return true;
        }
    }
    return false;
}

} // namespace

int StandstillWatch::Look(const DeskPulse& pulse, std::chrono::milliseconds elapsed) {
    const DeskPulse before = std::exchange(last_, pulse);
    if (!pulse.wanted || HasMoved(before, pulse)) {
        still_ = {};
        inARow_ = 0;
        return 0;
    }
    if (pulse.rendered != before.rendered) {
        still_ += elapsed;
    }
    if (still_ < kPatience) {
        return 0;
    }
    still_ = {};
    return ++inARow_;
}

} // namespace kalvo
