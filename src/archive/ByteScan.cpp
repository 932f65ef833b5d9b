#include "archive/ByteScan.h"

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace kalvo::ByteScan {

namespace {

using Function = void (*)(const char*, std::size_t, const Probe&, std::uint64_t*);

#if defined(__x86_64__)
__attribute__((target("avx2"))) void FindProbeAvx2(const char* text, std::size_t blocks, const Probe& probe,
                                                   std::uint64_t* masks) {
    const __m256i wanted[kBytes] = {_mm256_set1_epi8(probe.bytes[0]), _mm256_set1_epi8(probe.bytes[1]),
                                    _mm256_set1_epi8(probe.bytes[2])};
    for (std::size_t b = 0; b < blocks; ++b) {
        std::uint64_t mask = 0;
        for (int part = 0; part < 64; part += 32, text += 32) {
            __m256i found = _mm256_set1_epi8(-1);
            for (std::size_t k = 0; k < kBytes; ++k) {
                const auto* at = reinterpret_cast<const __m256i*>(text + probe.offsets[k]);
                found = _mm256_and_si256(found, _mm256_cmpeq_epi8(_mm256_loadu_si256(at), wanted[k]));
            }
            mask |= std::uint64_t{static_cast<std::uint32_t>(_mm256_movemask_epi8(found))} << part;
        }
        masks[b] = mask;
    }
}

void FindProbeSse2(const char* text, std::size_t blocks, const Probe& probe, std::uint64_t* masks) {
    const __m128i wanted[kBytes] = {_mm_set1_epi8(probe.bytes[0]), _mm_set1_epi8(probe.bytes[1]),
                                    _mm_set1_epi8(probe.bytes[2])};
    for (std::size_t b = 0; b < blocks; ++b) {
        std::uint64_t mask = 0;
        for (int part = 0; part < 64; part += 16, text += 16) {
            __m128i found = _mm_set1_epi8(-1);
            for (std::size_t k = 0; k < kBytes; ++k) {
                const auto* at = reinterpret_cast<const __m128i*>(text + probe.offsets[k]);
                found = _mm_and_si128(found, _mm_cmpeq_epi8(_mm_loadu_si128(at), wanted[k]));
            }
            mask |= std::uint64_t{static_cast<std::uint32_t>(_mm_movemask_epi8(found))} << part;
        }
        masks[b] = mask;
    }
}
#endif

Function Fastest() {
#if defined(__x86_64__)
    return __builtin_cpu_supports("avx2") ? FindProbeAvx2 : FindProbeSse2;
#else
    return FindProbePlain;
#endif
}

} // namespace

void FindProbePlain(const char* text, std::size_t blocks, const Probe& probe, std::uint64_t* masks) {
    for (std::size_t b = 0; b < blocks; ++b) {
        masks[b] = 0;
        for (std::size_t i = 0; i < kBlock; ++i, ++text) {
            bool found = true;
            for (std::size_t k = 0; k < kBytes; ++k)
                found = found && text[probe.offsets[k]] == probe.bytes[k];
            masks[b] |= std::uint64_t{found} << i;
        }
    }
}

void FindProbe(const char* text, std::size_t blocks, const Probe& probe, std::uint64_t* masks) {
    static const Function function = Fastest();
    function(text, blocks, probe, masks);
}

} // namespace kalvo::ByteScan
