// The ends of eight rows of a large dab that only steep arcs cross: LargeDabShape solved for the
// column, with the rows in lanes.
//
// Plotted are the last pixel inside the circle (insideOf) and the one beyond it.
#pragma once

#include "shareForLines/RowEndsAvx2.h"

#pragma GCC push_options
#pragma GCC target("avx2")

namespace streakfall::avx2 {

struct SteepRows {
    // Last columns inside the circle, dab coordinates.
    alignas(32) std::int32_t left[kLanes], right[kLanes];
    // Coverage of the pixels outside and inside, in the order of their columns.
    alignas(32) std::int64_t leftPair[kLanes], rightPair[kLanes];

    // Rows dabY to dabY + 7. table: coverage by column. Of rows beyond the circle the columns
    // mean nothing.
    void place(const LargeDabShape& s, const std::uint8_t* table, std::int32_t dabY) {
        const __m256i iota = _mm256_setr_epi32(0, 1, 2, 3, 4, 5, 6, 7);
        const __m256i v = _mm256_add_epi32(_mm256_set1_epi32(16 * dabY - s.centre.fy),
                                           _mm256_slli_epi32(iota, 4));
        // v^2 - limit
        const __m256i level =
            _mm256_sub_epi32(_mm256_mullo_epi32(v, v), _mm256_set1_epi32(s.limit));
        const __m256i u = lastInside(level);
        const __m256i fx = _mm256_set1_epi32(s.centre.fx);
        const __m256i rightIn = _mm256_srai_epi32(_mm256_add_epi32(u, fx), 4);
        const __m256i leftIn = _mm256_srai_epi32(_mm256_sub_epi32(u, fx), 4);  // negated
        _mm256_store_si256(reinterpret_cast<__m256i*>(right), rightIn);
        _mm256_store_si256(reinterpret_cast<__m256i*>(left),
                           _mm256_sub_epi32(_mm256_setzero_si256(), leftIn));

        const __m256i low = halfTable(table), high = halfTable(table + 16);
        // Of the pixel at this |u|, and of the next one outward.
        const auto coverages = [&](__m256i offset, __m256i& in, __m256i& out) {
            const __m256i over = _mm256_add_epi32(_mm256_mullo_epi32(offset, offset), level);
            const __m256i further = _mm256_add_epi32(
                over, _mm256_add_epi32(_mm256_slli_epi32(offset, 5), _mm256_set1_epi32(256)));
            const __m256i all = _mm256_set1_epi32(-1), byte = _mm256_set1_epi32(0xFF);
            in = _mm256_and_si256(lookUp(low, high, columnsOf(over, s, all)), byte);
            out = _mm256_and_si256(lookUp(low, high, columnsOf(further, s, all)), byte);
        };
        __m256i in, out;
        coverages(_mm256_add_epi32(_mm256_slli_epi32(leftIn, 4), fx), in, out);
        storePairs(out, in, leftPair);
        coverages(_mm256_sub_epi32(_mm256_slli_epi32(rightIn, 4), fx), in, out);
        storePairs(in, out, rightPair);
    }

  private:
    static void storePairs(__m256i first, __m256i second, std::int64_t* pairs) {
        const __m256i a = _mm256_unpacklo_epi32(first, second);
        const __m256i b = _mm256_unpackhi_epi32(first, second);
        _mm256_store_si256(reinterpret_cast<__m256i*>(pairs),
                           _mm256_permute2x128_si256(a, b, 0x20));
        _mm256_store_si256(reinterpret_cast<__m256i*>(pairs + 4),
                           _mm256_permute2x128_si256(a, b, 0x31));
    }
};

}  // namespace streakfall::avx2

#pragma GCC pop_options
