// Writes one value to many pixels of a row, 32 bytes at a time.
#pragma once

#include <immintrin.h>

#include <algorithm>
#include <cstdint>

#include "shareForLines/simd/Begin.h"

namespace streakfall::avx2 {

// `to`: the first pixel, anywhere in memory.
template <class Pixel>
inline void fillPixels(Pixel* to, std::int32_t count, const Pixel& value) {
    constexpr std::int32_t kEach = 32 / sizeof(Pixel);
    alignas(32) Pixel values[kEach];
    std::fill_n(values, kEach, value);
    const __m256i bytes = _mm256_load_si256(reinterpret_cast<const __m256i*>(values));
    for (; count >= kEach; count -= kEach, to += kEach) {
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(to), bytes);
    }
    std::fill_n(to, count, value);
}

}  // namespace streakfall::avx2

#include "shareForLines/simd/End.h"
