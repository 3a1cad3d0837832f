// Where eight rows of a large dab begin and end: LargeDabShape solved for the columns, with the
// rows in lanes.
//
// With (u, v) the offset from the quantised centre in 1/16 pixels, a pixel is inside while
// u^2 < limit - v^2, so the last |u| inside is the whole part of sqrt(limit - v^2 - 1), in double
// precision exact for numbers of 31 bits. What a row paints follows from the columns inside in it,
// in the row before it, towards the middle, and in the one behind it, away from the middle:
//
//   inner   inside in the row, less a pixel at each side, and inside in the row behind. These are
//           the interior, just so where arcs of one kind cross the row: with steep arcs alone the
//           row behind is narrower by no more than that pixel, with flat arcs alone by no less.
//           In the mixed rows between some more pixels may be interior.
//   outer   inside in the row before, or within a pixel of those inside in the row: what lies
//           beyond is untouched.
#pragma once

#include <cmath>

#include "shareForLines/LargeDabLanesAvx2.h"
#include "shareForLines/RowsInside.h"

#pragma GCC push_options
#pragma GCC target("avx2")

namespace streakfall::avx2 {

// The last |u| inside of rows whose v^2 - limit this is, in 1/16 pixels; 0 for rows outside of the
// circle.
inline __m256i lastInside(__m256i level) {
    const auto four = [](__m128i part) __attribute__((always_inline)) {
        return _mm256_cvttpd_epi32(_mm256_sqrt_pd(_mm256_cvtepi32_pd(part)));
    };
    const __m256i n =
        _mm256_max_epi32(_mm256_xor_si256(level, _mm256_set1_epi32(-1)), _mm256_setzero_si256());
    return _mm256_set_m128i(four(_mm256_extracti128_si256(n, 1)), four(_mm256_castsi256_si128(n)));
}

// Fills in all rows of a dab.
inline void placeRows(RowsInside& rows, const LargeDabShape& s) {
    rows.first = -truncToI32(s.radius) - RowsInside::kMargin;
    const __m256i fx = _mm256_set1_epi32(s.centre.fx), x = _mm256_set1_epi32(s.centre.xi);
    const __m256i beyond = _mm256_set1_epi32(RowsInside::kBeyond);
    __m256i v = _mm256_add_epi32(_mm256_set1_epi32(16 * rows.first - s.centre.fy),
                                 _mm256_slli_epi32(_mm256_setr_epi32(0, 1, 2, 3, 4, 5, 6, 7), 4));
    for (std::int32_t dabY = rows.first; dabY <= RowsInside::kMargin - rows.first; dabY += kLanes) {
        const __m256i level =
            _mm256_sub_epi32(_mm256_mullo_epi32(v, v), _mm256_set1_epi32(s.limit));
        const __m256i none = _mm256_cmpgt_epi32(level, _mm256_set1_epi32(-1));
        const __m256i u = lastInside(level);
        const __m256i left = _mm256_srai_epi32(_mm256_sub_epi32(u, fx), 4);
        const __m256i right = _mm256_srai_epi32(_mm256_add_epi32(u, fx), 4);
        const std::size_t i = rows.index(dabY);
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(&rows.from[i]),
                            _mm256_blendv_epi8(_mm256_sub_epi32(x, left), beyond, none));
        _mm256_storeu_si256(
            reinterpret_cast<__m256i*>(&rows.to[i]),
            _mm256_blendv_epi8(_mm256_add_epi32(x, right),
                               _mm256_sub_epi32(_mm256_setzero_si256(), beyond), none));
        v = _mm256_add_epi32(v, _mm256_set1_epi32(16 * kLanes));
    }
}

// Columns of the buffer, both ends included; from > to where a row has none.
struct RowEnds {
    __m256i innerFrom, innerTo;
    __m256i outerFrom, outerTo;
    __m256i edgeFrom, edgeTo;  // the last ones inside
    __m256i flat, mixed;       // all ones in rows that flat arcs alone cross, and in mixed ones

    // Rows dabY to dabY + 7, of which the first lies at most three above the dab and three below.
    RowEnds(const LargeDabShape& s, const RowsInside& inside, std::int32_t dabY) {
        const __m256i v =
            _mm256_add_epi32(_mm256_set1_epi32(16 * dabY - s.centre.fy),
                             _mm256_slli_epi32(_mm256_setr_epi32(0, 1, 2, 3, 4, 5, 6, 7), 4));
        const __m256i upper = _mm256_srai_epi32(v, 31);  // rows above the middle
        const std::size_t i = inside.index(dabY);
        const __m256i aboveFrom = load(&inside.from[i - 1]), belowFrom = load(&inside.from[i + 1]);
        const __m256i aboveTo = load(&inside.to[i - 1]), belowTo = load(&inside.to[i + 1]);
        const __m256i one = _mm256_set1_epi32(1);
        edgeFrom = load(&inside.from[i]);
        edgeTo = load(&inside.to[i]);
        innerFrom = _mm256_max_epi32(_mm256_blendv_epi8(belowFrom, aboveFrom, upper),
                                     _mm256_add_epi32(edgeFrom, one));
        innerTo = _mm256_min_epi32(_mm256_blendv_epi8(belowTo, aboveTo, upper),
                                   _mm256_sub_epi32(edgeTo, one));
        outerFrom = _mm256_min_epi32(_mm256_min_epi32(aboveFrom, belowFrom),
                                     _mm256_sub_epi32(edgeFrom, one));
        outerTo =
            _mm256_max_epi32(_mm256_max_epi32(aboveTo, belowTo), _mm256_add_epi32(edgeTo, one));
        const auto flatFrom = static_cast<std::int32_t>(std::ceil(16.0 * s.flatRowsFrom()));
        const auto steepTo = static_cast<std::int32_t>(std::floor(16.0 * s.steepRowsTo()));
        const __m256i far = _mm256_abs_epi32(v);
        flat = _mm256_cmpgt_epi32(far, _mm256_set1_epi32(flatFrom));
        mixed = _mm256_andnot_si256(flat, _mm256_cmpgt_epi32(far, _mm256_set1_epi32(steepTo - 1)));
    }
};

}  // namespace streakfall::avx2

#pragma GCC pop_options
