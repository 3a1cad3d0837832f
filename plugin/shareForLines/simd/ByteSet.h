// Sets of up to 32 things, each with a place from 0 to 127 in a byte of its own.
//
// The functions may only be called from code that compiles to the wide instructions.
#pragma once

#include <immintrin.h>

#include <array>
#include <cstdint>

#include "shareForLines/simd/Begin.h"

namespace streakfall::avx2 {

using Set = std::uint32_t;  // thing i in bit i

struct Bytes {
    __m256i v;

    explicit Bytes(const std::array<std::uint8_t, 32>& from)
        : v(_mm256_load_si256(reinterpret_cast<const __m256i*>(from.data()))) {}
    explicit Bytes(std::int32_t everywhere) : v(_mm256_set1_epi8(static_cast<char>(everywhere))) {}
};

// Those whose place in `a` lies behind that in `b`.
inline Set whereGreater(const Bytes& a, const Bytes& b) {
    return static_cast<Set>(_mm256_movemask_epi8(_mm256_cmpgt_epi8(a.v, b.v)));
}

// Those whose range, both ends included, does not hold the place.
inline Set whereMissed(const Bytes& from, const Bytes& to, std::int32_t place) {
    return whereGreater(from, Bytes(place)) | whereGreater(Bytes(place), to);
}

// The least of 32 bytes.
inline std::int32_t leastOf(__m256i bytes) {
    const __m128i half =
        _mm_min_epu8(_mm256_castsi256_si128(bytes), _mm256_extracti128_si256(bytes, 1));
    const __m128i words = _mm_min_epu8(half, _mm_srli_epi16(half, 8));
    return _mm_extract_epi16(_mm_minpos_epu16(words), 0);
}
inline std::int32_t leastOf(const Bytes& places) { return leastOf(places.v); }
inline std::int32_t mostOf(const Bytes& places) {
    return 255 - leastOf(_mm256_xor_si256(places.v, _mm256_set1_epi8(-1)));
}

// The least place of those whose range holds the one given; 255 without any.
inline std::int32_t leastOf(const Bytes& places, const Bytes& from, const Bytes& to,
                            std::int32_t place) {
    const Bytes at(place);
    const __m256i missed =
        _mm256_or_si256(_mm256_cmpgt_epi8(from.v, at.v), _mm256_cmpgt_epi8(at.v, to.v));
    return leastOf(_mm256_or_si256(places.v, missed));
}

// Of eight fours of bytes the first ones, the second ones and so on, eight bytes each.
inline void separate(const std::uint32_t* fours, std::uint8_t* first, std::uint8_t* second,
                     std::uint8_t* third, std::uint8_t* fourth) {
    const __m256i order = _mm256_broadcastsi128_si256(
        _mm_setr_epi8(0, 4, 8, 12, 1, 5, 9, 13, 2, 6, 10, 14, 3, 7, 11, 15));
    const __m256i grouped = _mm256_permutevar8x32_epi32(
        _mm256_shuffle_epi8(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(fours)), order),
        _mm256_setr_epi32(0, 4, 1, 5, 2, 6, 3, 7));
    const __m128i low = _mm256_castsi256_si128(grouped),
                  high = _mm256_extracti128_si256(grouped, 1);
    _mm_storel_epi64(reinterpret_cast<__m128i*>(first), low);
    _mm_storel_epi64(reinterpret_cast<__m128i*>(second), _mm_unpackhi_epi64(low, low));
    _mm_storel_epi64(reinterpret_cast<__m128i*>(third), high);
    _mm_storel_epi64(reinterpret_cast<__m128i*>(fourth), _mm_unpackhi_epi64(high, high));
}

}  // namespace streakfall::avx2

#include "shareForLines/simd/End.h"
