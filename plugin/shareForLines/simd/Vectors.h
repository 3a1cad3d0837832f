// Eight pixels at a time, for processors with AVX2: lanes, and coverage by column.
//
// The functions compile to AVX2 code and may only be called from code that does, too.
#pragma once

#include <immintrin.h>

#include <cstdint>

#include "shareForLines/disc/CoverageTable.h"
#include "shareForLines/simd/Begin.h"

namespace streakfall::avx2 {

inline constexpr std::int32_t kLanes = 8;

// Stands for the coverage of a dab's interior, where the pen's alpha is its own.
inline constexpr std::int32_t kInterior = 256;

inline __m256i load(const void* p) { return _mm256_loadu_si256(static_cast<const __m256i*>(p)); }

// Sixteen coverages of neighbouring columns, in words, blended like coverageInColumn.
inline __m256i blendRows(const CoverageBlend& w, std::int32_t column) {
    const auto* low = reinterpret_cast<const __m128i*>(&EdgeCoverageTable[w.rowLow][column]);
    const auto* high = reinterpret_cast<const __m128i*>(&EdgeCoverageTable[w.rowHigh][column]);
    const __m256i from = _mm256_cvtepu8_epi16(_mm_loadu_si128(low));
    const __m256i rise = _mm256_sub_epi16(_mm256_cvtepu8_epi16(_mm_loadu_si128(high)), from);
    // rise x weight in 16 bits: a weight of 32768 or more is taken less 65536, which the upper half
    // of the product lacks `rise` for; the lower half rounds.
    const __m256i weight = _mm256_set1_epi16(static_cast<std::int16_t>(w.weightHigh));
    const __m256i lacks = _mm256_and_si256(rise, _mm256_srai_epi16(weight, 15));
    const __m256i upper = _mm256_add_epi16(_mm256_mulhi_epi16(rise, weight), lacks);
    const __m256i up = _mm256_srli_epi16(_mm256_mullo_epi16(rise, weight), 15);
    return _mm256_add_epi16(from, _mm256_add_epi16(upper, up));
}

// All 32 coverages of a radius, by column, as bytes.
inline void coverageTable(const CoverageBlend& w, std::uint8_t* table) {
    const __m256i bytes = _mm256_packus_epi16(blendRows(w, 0), blendRows(w, 16));
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(table), _mm256_permute4x64_epi64(bytes, 0xD8));
}

}  // namespace streakfall::avx2

#include "shareForLines/simd/End.h"
