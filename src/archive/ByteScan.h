#pragma once

#include <cstddef>
#include <cstdint>

/** Looks for two bytes at a fixed distance, 64 places at once; by AVX2 or SSE2 where the processor has them. */
namespace kalvo::ByteScan {

/** Places that one mask covers. */
constexpr std::size_t kBlock = 64;

/**
 * Bit i of masks[b]: text[b * 64 + i] is `first` and text[b * 64 + i + distance] is `second`.
 * Reads up to text[blocks * 64 + distance - 1].
 */
void PairMasks(const char* text, std::size_t blocks, std::size_t distance, char first, char second,
               std::uint64_t* masks);

/** The same without vector instructions: what the fast ways are checked against, and other processors use. */
void PairMasksPlain(const char* text, std::size_t blocks, std::size_t distance, char first, char second,
                    std::uint64_t* masks);

} // namespace kalvo::ByteScan
