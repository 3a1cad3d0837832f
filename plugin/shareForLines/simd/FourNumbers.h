// Four numbers side by side: the box of a small dab, and its place.
//
// The functions may only be called from code that compiles to the wide instructions.
#pragma once

#include <immintrin.h>

#include <cstdint>

#include "shareForLines/simd/Begin.h"

namespace streakfall::avx2 {

// First column and row, last column and row.
class Box {
  public:
    // SmallDabBox of a dab that touches a canvas of this size, which keeps the numbers in range.
    Box(double x, double y, double r, std::int32_t width, std::int32_t height) {
        const __m256d corners = _mm256_add_pd(
            _mm256_add_pd(_mm256_setr_pd(0.0, 0.0, 0.5, 0.5), _mm256_setr_pd(x, y, x, y)),
            _mm256_setr_pd(-r, -r, r, r));
        const __m128i least = _mm_setr_epi32(0, 0, INT32_MIN, INT32_MIN);
        const __m128i most = _mm_setr_epi32(INT32_MAX, INT32_MAX, width - 1, height - 1);
        v = _mm_min_epi32(_mm_max_epi32(_mm256_cvttpd_epi32(corners), least), most);
    }

    bool isEmpty() const { return anyAxis(emptyAxes()); }
    Box from(std::int32_t x, std::int32_t y) const {
        return Box(_mm_sub_epi32(v, _mm_setr_epi32(x, y, x, y)));
    }
    // It is not empty, and its first pixel at most this far from (place, place) on both axes.
    bool isWithin(std::int32_t reach, std::int32_t place) const {
        const __m128i off = _mm_abs_epi32(_mm_sub_epi32(v, _mm_set1_epi32(place)));
        return !anyAxis(_mm_or_si128(_mm_cmpgt_epi32(off, _mm_set1_epi32(reach)), emptyAxes()));
    }
    // Numbers of 0 to 255, a byte each.
    std::uint32_t bytes() const {
        const __m128i packed = _mm_shuffle_epi8(v, _mm_set1_epi32(0x0C080400));
        return static_cast<std::uint32_t>(_mm_cvtsi128_si32(packed));
    }
    std::int32_t firstX() const { return _mm_extract_epi32(v, 0); }
    std::int32_t firstY() const { return _mm_extract_epi32(v, 1); }
    std::int32_t lastX() const { return _mm_extract_epi32(v, 2); }
    std::int32_t lastY() const { return _mm_extract_epi32(v, 3); }

  private:
    explicit Box(__m128i numbers) : v(numbers) {}
    __m128i emptyAxes() const { return _mm_cmpgt_epi32(v, _mm_shuffle_epi32(v, 0xEE)); }
    // True where x or y is set.
    static bool anyAxis(__m128i lanes) {
        return (_mm_movemask_ps(_mm_castsi128_ps(lanes)) & 3) != 0;
    }
    __m128i v;
};

// Three numbers that belong together; the fourth is 0.
class Triple {
  public:
    // Not loaded at once: what was written in parts would be waited for.
    Triple(double a, double b, double c) : v(_mm256_setr_pd(a, b, c, 0.0)) {}
    explicit Triple(const double* from) : v(_mm256_loadu_pd(from)) {}
    // Writes a fourth number behind.
    void store(double* to) const { _mm256_storeu_pd(to, v); }

    // All three differ by no more than this.
    bool isNear(const Triple& other, double most) const {
        const __m256d distance = _mm256_andnot_pd(_mm256_set1_pd(-0.0), _mm256_sub_pd(v, other.v));
        const __m256d near = _mm256_cmp_pd(distance, _mm256_set1_pd(most), _CMP_LE_OQ);
        return (_mm256_movemask_pd(near) & 7) == 7;
    }

  private:
    __m256d v;
};

}  // namespace streakfall::avx2

#include "shareForLines/simd/End.h"
