#pragma once

#include <array>
#include <cstdint>
#include <vector>

namespace kalvo {

/** The outline of a title's loudness from its start to its end, in columns of equal time. */
struct Waveform {
    static constexpr int kColumns = 1024;

    /** Of both channels together; 255 is full scale. */
    struct Column {
        std::uint8_t peak = 0;
        std::uint8_t rms = 0;

        bool operator==(const Column&) const = default;
    };

    std::array<Column, kColumns> columns{};
    int known = 0; ///< columns measured so far, from the start on

    bool operator==(const Waveform&) const = default;
};

/**
 * Heights, 0 to 1, of so many bars over the whole title. Half the peak and half the mean: peaks alone are one block in
 * today's music, means alone hide single beats. The loudest bar reaches 1, but a quiet title is raised fourfold at
 * most. count below 1: none.
 */
std::vector<float> WaveBars(const Waveform& waveform, int count);

} // namespace kalvo
