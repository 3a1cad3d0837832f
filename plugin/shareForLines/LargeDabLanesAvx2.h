// What a large dab does to eight pixels of a row at once: LargeDabShape in vectors.
#pragma once

#include "shareForLines/LargeDabShape.h"
#include "shareForLines/VectorsAvx2.h"

#pragma GCC push_options
#pragma GCC target("avx2")

namespace streakfall::avx2 {

// Table columns of eight pixels from their u^2 + v^2 - limit: the distance formula as it is
// defined, on a sum that is exact.
__attribute__((noinline)) inline __m256i exactColumnsOf(__m256i over, const LargeDabShape& shape) {
    const __m256i n = _mm256_add_epi32(over, _mm256_set1_epi32(shape.limit));
    const auto four = [&](__m128i part) __attribute__((always_inline)) {
        const __m256d sum = _mm256_mul_pd(_mm256_cvtepi32_pd(part), _mm256_set1_pd(1.0 / 256.0));
        const __m256d d = _mm256_div_pd(_mm256_sub_pd(sum, _mm256_set1_pd(shape.squared)),
                                        _mm256_set1_pd(2.0 * shape.radius));
        const __m256d c = _mm256_add_pd(
            _mm256_mul_pd(_mm256_add_pd(d, _mm256_set1_pd(1.0)), _mm256_set1_pd(16.0)),
            _mm256_set1_pd(0.5));
        return _mm256_cvttpd_epi32(
            _mm256_min_pd(_mm256_max_pd(c, _mm256_setzero_pd()), _mm256_set1_pd(31.0)));
    };
    return _mm256_set_m128i(four(_mm256_extracti128_si256(n, 1)), four(_mm256_castsi256_si128(n)));
}

// The same for the lanes of `wanted`, by single precision where that is sure. Between columns 0
// and 32 the sum is below 1024 r, exact in single precision, and what is rounded, below 2^17
// 4096ths, has an error of less than 0.05; with the rounding to whole ones less than 1. Pixels
// that near a column's edge take the exact way.
inline __m256i columnsOf(__m256i over, const LargeDabShape& shape, __m256i wanted) {
    const __m256 raw =
        _mm256_add_ps(_mm256_mul_ps(_mm256_cvtepi32_ps(over), _mm256_set1_ps(shape.columnScale)),
                      _mm256_set1_ps(shape.columnBase));
    // Beyond columns 0.5 and 31.5 there is no edge to miss.
    const __m256i fine = _mm256_cvtps_epi32(_mm256_min_ps(
        _mm256_max_ps(raw, _mm256_set1_ps(0.5f * 4096.0f)), _mm256_set1_ps(31.5f * 4096.0f)));
    const __m256i rest =
        _mm256_and_si256(_mm256_add_epi32(fine, _mm256_set1_epi32(1)), _mm256_set1_epi32(4095));
    const __m256i near = _mm256_and_si256(_mm256_cmpgt_epi32(_mm256_set1_epi32(3), rest), wanted);
    if (_mm256_testz_si256(near, near) == 0) [[unlikely]]
        return exactColumnsOf(over, shape);
    return _mm256_srli_epi32(fine, 12);
}

// All ones in the lanes of columns x to x + 7 that lie in the range.
inline __m256i inRange(const Range& range, std::int32_t x, __m256i iota) {
    return _mm256_andnot_si256(_mm256_cmpgt_epi32(_mm256_set1_epi32(range.from - x), iota),
                               _mm256_cmpgt_epi32(_mm256_set1_epi32(range.to - x + 1), iota));
}

struct LanesOfDab {
    __m256i coverage;  // 0 untouched, kInterior, else the coverage of an edge pixel
    __m256i twice;     // all ones where a flat and a steep arc both plot
};

// Which arcs may cross a row.
enum class Arcs { kFlat, kSteep, kBoth };

// Buffer pixels (x, y) to (x + 7, y). table: coverage by column for the dab's radius.
template <Arcs kArcs = Arcs::kBoth>
__attribute__((always_inline)) inline LanesOfDab coverLanes(const LargeDabShape& s,
                                                            const std::uint8_t* table,
                                                            std::int32_t x, std::int32_t y) {
    const std::int32_t dabX = x - s.centre.xi, dabY = y - s.centre.yi;
    const std::int32_t v = 16 * dabY - s.centre.fy;
    const __m256i iota = _mm256_setr_epi32(0, 1, 2, 3, 4, 5, 6, 7);
    const __m256i u =
        _mm256_add_epi32(_mm256_set1_epi32(16 * dabX - s.centre.fx), _mm256_slli_epi32(iota, 4));
    const __m256i over =
        _mm256_add_epi32(_mm256_mullo_epi32(u, u), _mm256_set1_epi32(v * v - s.limit));
    const __m256i inside = _mm256_srai_epi32(over, 31);
    // A pixel straddles along an axis when its neighbour across the circle, one pixel on, is on
    // the other side: outward from inside, inward from outside.
    const __m256i next = _mm256_add_epi32(over, _mm256_set1_epi32(256));
    const auto straddles = [&](__m256i offset) {
        const __m256i change = _mm256_slli_epi32(_mm256_abs_epi32(offset), 5);
        const __m256i back = _mm256_sub_epi32(_mm256_setzero_si256(), change);
        const __m256i across = _mm256_add_epi32(next, _mm256_blendv_epi8(back, change, inside));
        return _mm256_xor_si256(inside, _mm256_srai_epi32(across, 31));
    };
    __m256i plotted = straddles(kArcs == Arcs::kSteep ? u : _mm256_set1_epi32(v));
    __m256i twice = _mm256_setzero_si256();
    if constexpr (kArcs == Arcs::kBoth) {
        const __m256i flat = inRange(v >= 0 ? s.flatBottom : s.flatTop, dabX, iota);
        const __m256i steep = _mm256_blendv_epi8(_mm256_set1_epi32(s.steepRight.has(dabY) ? -1 : 0),
                                                 _mm256_set1_epi32(s.steepLeft.has(dabY) ? -1 : 0),
                                                 _mm256_srai_epi32(u, 31));
        const __m256i byFlat = _mm256_and_si256(flat, plotted);
        const __m256i bySteep = _mm256_and_si256(steep, straddles(u));
        plotted = _mm256_or_si256(byFlat, bySteep);
        twice = _mm256_and_si256(byFlat, bySteep);
    }
    LanesOfDab lanes;
    lanes.twice = twice;
    lanes.coverage =
        _mm256_and_si256(_mm256_andnot_si256(plotted, inside), _mm256_set1_epi32(kInterior));
    if (_mm256_testz_si256(plotted, plotted) == 0) {
        const __m256i edge =
            lookUp(halfTable(table), halfTable(table + 16), columnsOf(over, s, plotted));
        lanes.coverage = _mm256_or_si256(
            lanes.coverage,
            _mm256_and_si256(_mm256_and_si256(edge, _mm256_set1_epi32(0xFF)), plotted));
    }
    return lanes;
}

}  // namespace streakfall::avx2

#pragma GCC pop_options
