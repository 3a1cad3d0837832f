// Eight lanes at a time, as the compiler's own vector types: their operators do what the same
// operators do on a number, lane by lane, and a comparison gives all ones where it holds.
//
// The functions compile to AVX2 code and may only be called from code that does, too.
#pragma once

#include <immintrin.h>

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "shareForLines/simd/Begin.h"

namespace streakfall::lanes {

using Ints = std::int32_t __attribute__((vector_size(32)));
using Floats = float __attribute__((vector_size(32)));

inline constexpr std::int32_t kCount = 8;
inline constexpr Ints kIota = {0, 1, 2, 3, 4, 5, 6, 7};

inline __m256i raw(Ints v) { return reinterpret_cast<__m256i>(v); }
inline __m256 raw(Floats v) { return reinterpret_cast<__m256>(v); }
inline Ints ints(__m256i v) { return reinterpret_cast<Ints>(v); }
inline Floats floats(__m256 v) { return reinterpret_cast<Floats>(v); }

inline Ints all(std::int32_t value) { return ints(_mm256_set1_epi32(value)); }
inline Floats all(float value) { return floats(_mm256_set1_ps(value)); }

inline Ints load(const std::int32_t* from) {
    return ints(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(from)));
}
inline Floats load(const float* from) { return floats(_mm256_loadu_ps(from)); }
inline void store(std::int32_t* to, Ints v) {
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(to), raw(v));
}

inline Ints least(Ints a, Ints b) { return ints(_mm256_min_epi32(raw(a), raw(b))); }
inline Ints most(Ints a, Ints b) { return ints(_mm256_max_epi32(raw(a), raw(b))); }
inline Floats least(Floats a, Floats b) { return floats(_mm256_min_ps(raw(a), raw(b))); }
inline Floats most(Floats a, Floats b) { return floats(_mm256_max_ps(raw(a), raw(b))); }
inline Ints magnitude(Ints v) { return ints(_mm256_abs_epi32(raw(v))); }
inline Floats root(Floats v) { return floats(_mm256_sqrt_ps(raw(v))); }
inline Ints where(Ints mask, Ints yes, Ints no) {
    return ints(_mm256_blendv_epi8(raw(no), raw(yes), raw(mask)));
}
inline Floats where(Ints mask, Floats yes, Floats no) {
    return floats(_mm256_blendv_ps(raw(no), raw(yes), _mm256_castsi256_ps(raw(mask))));
}

inline bool any(Ints mask) { return _mm256_testz_si256(raw(mask), raw(mask)) == 0; }
inline unsigned bits(Ints mask) {
    return static_cast<unsigned>(_mm256_movemask_ps(_mm256_castsi256_ps(raw(mask))));
}

inline Floats toFloats(Ints v) { return floats(_mm256_cvtepi32_ps(raw(v))); }
inline Ints rounded(Floats v) { return ints(_mm256_cvtps_epi32(raw(v))); }
inline Ints floorOf(Floats v) { return ints(_mm256_cvtps_epi32(_mm256_floor_ps(raw(v)))); }
inline Ints ceilOf(Floats v) { return ints(_mm256_cvtps_epi32(_mm256_ceil_ps(raw(v)))); }

// Lanes that are pairs of 16 bits: difference by halves, and the sum of both halves' squares.
inline Ints pairDifference(Ints a, Ints b) { return ints(_mm256_sub_epi16(raw(a), raw(b))); }
inline Ints pairSquares(Ints a) { return ints(_mm256_madd_epi16(raw(a), raw(a))); }
inline Ints lowHalf(Ints pair) { return (pair << 16) >> 16; }
inline Ints highHalf(Ints pair) { return pair >> 16; }
inline Ints pairOf(Ints low, Ints high) { return (high << 16) | (low & all(0xFFFF)); }

// True by lane where the value lies in a range of two 16-bit halves, both ends included.
inline Ints within(Ints value, Ints range) {
    return (value >= lowHalf(range)) & (value <= highHalf(range));
}

// Entries of a table of 32 bytes by lanes of 0 to 31.
struct ByteTable {
    __m256i low, high;

    explicit ByteTable(const std::uint8_t* table)
        : low(_mm256_broadcastsi128_si256(
              _mm_loadu_si128(reinterpret_cast<const __m128i*>(table)))),
          high(_mm256_broadcastsi128_si256(
              _mm_loadu_si128(reinterpret_cast<const __m128i*>(table + 16)))) {}

    Ints operator[](Ints index) const {
        // Bit 4 of the index, moved to the top of its byte, picks the half.
        const __m256i i = raw(index);
        const __m256i found = _mm256_blendv_epi8(
            _mm256_shuffle_epi8(low, i), _mm256_shuffle_epi8(high, i), _mm256_slli_epi32(i, 3));
        return ints(found) & all(0xFF);
    }
};

// The bytes at these places; three behind each may be read as well.
inline Ints byteAt(const std::uint8_t* bytes, Ints place) {
    return ints(_mm256_i32gather_epi32(reinterpret_cast<const int*>(bytes), raw(place), 1)) &
           all(0xFF);
}

}  // namespace streakfall::lanes

#include "shareForLines/simd/End.h"
