#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

/** Looks for three bytes at fixed distances, 64 places at once; by AVX2 or SSE2 where the processor has them. */
namespace kalvo::ByteScan {

/** Places that one mask covers. */
constexpr std::size_t kBlock = 64;
constexpr std::size_t kBytes = 3;

/** What to look for: bytes[k] at offsets[k] from a place. Two entries may be the same. */
struct Probe {
    std::array<char, kBytes> bytes = {};
    std::array<std::size_t, kBytes> offsets = {};
};

/**
 * Bit i of masks[b]: the probe's bytes are found from text[b * 64 + i]. Reads up to the largest offset beyond the last
 * place.
 */
void FindProbe(const char* text, std::size_t blocks, const Probe& probe, std::uint64_t* masks);

/** The same without vector instructions: what the fast ways are checked against, and other processors use. */
void FindProbePlain(const char* text, std::size_t blocks, const Probe& probe, std::uint64_t* masks);

} // namespace kalvo::ByteScan
