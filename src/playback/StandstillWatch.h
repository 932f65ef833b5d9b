#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <optional>

namespace kalvo {

/** What tells whether music moves on. */
struct DeskPulse {
    bool wanted = false;        ///< the desk should be playing
    std::uint64_t rendered = 0; ///< buffers that the output has taken so far
    /** Seconds, of each player that is to be heard. */
    std::array<std::optional<double>, 2> positions;
};

/**
 * Notices that the music has come to a stand: the desk should be playing, the output takes buffers, and no title has
 * moved for kPatience. Time in which the output takes nothing does not count: there the device is the trouble, and
 * another title would not be heard either. Time is told by the caller. UI thread.
 */
class StandstillWatch {
public:
    static constexpr std::chrono::milliseconds kPatience{2000};

    /**
     * elapsed: since the last look. Returns which standstill in a row has just been found, from 1 on, 0 for none. The
     * time then begins anew; the row ends when a title moves or nothing is wanted.
     */
    int Look(const DeskPulse& pulse, std::chrono::milliseconds elapsed);

private:
    DeskPulse last_;
    std::chrono::milliseconds still_{0};
    int inARow_ = 0;
};

} // namespace kalvo
