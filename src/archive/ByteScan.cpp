#include "archive/ByteScan.h"

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace kalvo::ByteScan {

namespace {

using Function = void (*)(const char*, std::size_t, std::size_t, char, char, std::uint64_t*);

#if defined(__x86_64__)
__attribute__((target("avx2"))) void PairMasksAvx2(const char* text, std::size_t blocks, std::size_t distance,
                                                   char first, char second, std::uint64_t* masks) {
    const __m256i firsts = _mm256_set1_epi8(first);
    const __m256i seconds = _mm256_set1_epi8(second);
    for (std::size_t b = 0; b < blocks; ++b, text += kBlock) {
        std::uint64_t mask = 0;
        for (int part = 0; part < 2; ++part) {
            const char* at = text + part * 32;
            const __m256i left = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(at));
            const __m256i right = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(at + distance));
            const __m256i both = _mm256_and_si256(_mm256_cmpeq_epi8(left, firsts), _mm256_cmpeq_epi8(right, seconds));
            mask |= std::uint64_t{static_cast<std::uint32_t>(_mm256_movemask_epi8(both))} << (part * 32);
        }
        masks[b] = mask;
    }
}

void PairMasksSse2(const char* text, std::size_t blocks, std::size_t distance, char first, char second,
                   std::uint64_t* masks) {
    const __m128i firsts = _mm_set1_epi8(first);
    const __m128i seconds = _mm_set1_epi8(second);
    for (std::size_t b = 0; b < blocks; ++b, text += kBlock) {
        std::uint64_t mask = 0;
        for (int part = 0; part < 4; ++part) {
            const char* at = text + part * 16;
            const __m128i left = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
            const __m128i right = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at + distance));
            const __m128i both = _mm_and_si128(_mm_cmpeq_epi8(left, firsts), _mm_cmpeq_epi8(right, seconds));
            mask |= std::uint64_t{static_cast<std::uint32_t>(_mm_movemask_epi8(both))} << (part * 16);
        }
        masks[b] = mask;
    }
}
#endif

Function Fastest() {
#if defined(__x86_64__)
    return __builtin_cpu_supports("avx2") ? PairMasksAvx2 : PairMasksSse2;
#else
    return PairMasksPlain;
#endif
}

} // namespace

void PairMasksPlain(const char* text, std::size_t blocks, std::size_t distance, char first, char second,
                    std::uint64_t* masks) {
    for (std::size_t b = 0; b < blocks; ++b, text += kBlock) {
        std::uint64_t mask = 0;
        for (std::size_t i = 0; i < kBlock; ++i)
            mask |= std::uint64_t{text[i] == first && text[i + distance] == second} << i;
        masks[b] = mask;
    }
}

void PairMasks(const char* text, std::size_t blocks, std::size_t distance, char first, char second,
               std::uint64_t* masks) {
    static const Function function = Fastest();
    function(text, blocks, distance, first, second, masks);
}

} // namespace kalvo::ByteScan
