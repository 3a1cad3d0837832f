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

#include <array>
#include <cmath>

#include "shareForLines/LargeDabLanesAvx2.h"

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

// The columns inside of all rows of a dab. Owner: who paints dabs one after the other; 33 KiB.
class RowsInside {
  public:
    void place(const LargeDabShape& s) {
        first = -truncToI32(s.radius) - kMargin;
        const __m256i fx = _mm256_set1_epi32(s.centre.fx), x = _mm256_set1_epi32(s.centre.xi);
        __m256i v = _mm256_add_epi32(_mm256_set1_epi32(16 * first - s.centre.fy),
                                     _mm256_slli_epi32(iota(), 4));
        for (std::int32_t row = first; row <= kMargin - first; row += kLanes) {
            const __m256i level =
                _mm256_sub_epi32(_mm256_mullo_epi32(v, v), _mm256_set1_epi32(s.limit));
            const __m256i none = _mm256_cmpgt_epi32(level, _mm256_set1_epi32(-1));
            const __m256i u = lastInside(level);
            const __m256i left = _mm256_srai_epi32(_mm256_sub_epi32(u, fx), 4);
            const __m256i right = _mm256_srai_epi32(_mm256_add_epi32(u, fx), 4);
            const __m256i far = _mm256_set1_epi32(kFar);
            store(from, row, _mm256_blendv_epi8(_mm256_sub_epi32(x, left), far, none));
            store(to, row,
                  _mm256_blendv_epi8(_mm256_add_epi32(x, right),
                                     _mm256_sub_epi32(_mm256_setzero_si256(), far), none));
            v = _mm256_add_epi32(v, _mm256_set1_epi32(16 * kLanes));
        }
    }

    // Of rows dabY to dabY + 7, at most three rows above and eleven below the dab.
    __m256i fromOf(std::int32_t dabY) const { return load(&from[index(dabY)]); }
    __m256i toOf(std::int32_t dabY) const { return load(&to[index(dabY)]); }

  private:
    static constexpr std::int32_t kMargin = 5;     // rows above the dab
    static constexpr std::int32_t kFar = 1 << 28;  // beyond all columns
    using Columns =
        std::array<std::int32_t, 2 * static_cast<std::size_t>(LargeDabShape::kMaxRadius) + 40>;

    std::size_t index(std::int32_t dabY) const { return static_cast<std::size_t>(dabY - first); }
    static __m256i iota() { return _mm256_setr_epi32(0, 1, 2, 3, 4, 5, 6, 7); }
    void store(Columns& columns, std::int32_t dabY, __m256i v) {
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(&columns[index(dabY)]), v);
    }

    std::int32_t first = 0;  // row of the first column
    Columns from, to;
};

// Columns of the buffer, both ends included; from > to where a row has none.
struct RowEnds {
    __m256i innerFrom, innerTo;
    __m256i outerFrom, outerTo;
    __m256i edgeFrom, edgeTo;  // the last ones inside
    __m256i flat, mixed;       // all ones in rows that flat arcs alone cross, and in mixed ones

    // Rows dabY to dabY + 7 of the dab.
    RowEnds(const LargeDabShape& s, const RowsInside& inside, std::int32_t dabY) {
        const __m256i v =
            _mm256_add_epi32(_mm256_set1_epi32(16 * dabY - s.centre.fy),
                             _mm256_slli_epi32(_mm256_setr_epi32(0, 1, 2, 3, 4, 5, 6, 7), 4));
        const __m256i upper = _mm256_srai_epi32(v, 31);  // rows above the middle
        const __m256i aboveFrom = inside.fromOf(dabY - 1), belowFrom = inside.fromOf(dabY + 1);
        const __m256i aboveTo = inside.toOf(dabY - 1), belowTo = inside.toOf(dabY + 1);
        const __m256i one = _mm256_set1_epi32(1);
        edgeFrom = inside.fromOf(dabY);
        edgeTo = inside.toOf(dabY);
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
