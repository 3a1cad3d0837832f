// Eight pixels at a time, for processors with AVX2: coverage by column, and the merge.
//
// The functions compile to AVX2 code and may only be called from code that does, too.
#pragma once

#include <immintrin.h>

#include <algorithm>
#include <array>
#include <cstdint>

#include "shareForLines/AlphaByCoverage.h"
#include "shareForLines/CoverageTable.h"
#include "shareForLines/MergePixel.h"

#pragma GCC push_options
#pragma GCC target("avx2")

namespace streakfall::avx2 {

inline constexpr std::int32_t kLanes = 8;

alignas(32) inline constexpr std::int32_t kWindow[24] = {0,  0,  0,  0,  0, 0, 0, 0, -1, -1, -1, -1,
                                                         -1, -1, -1, -1, 0, 0, 0, 0, 0,  0,  0,  0};

inline __m256i load(const void* p) { return _mm256_loadu_si256(static_cast<const __m256i*>(p)); }

// All ones in the first `count` lanes, 0 to 8.
inline __m256i firstLanes(std::int32_t count) { return load(kWindow + 16 - count); }

// All ones in lanes `from` to `to`; either may lie outside 0 to 7.
inline __m256i lanesBetween(std::int32_t from, std::int32_t to) {
    return _mm256_andnot_si256(firstLanes(std::clamp(from, 0, kLanes)),
                               firstLanes(std::clamp(to + 1, 0, kLanes)));
}

// Eight lanes of 0 to 255 as bytes.
inline void storeBytes(__m256i lanes, std::uint8_t* to) {
    const __m128i words =
        _mm_packus_epi32(_mm256_castsi256_si128(lanes), _mm256_extracti128_si256(lanes, 1));
    _mm_storel_epi64(reinterpret_cast<__m128i*>(to), _mm_packus_epi16(words, words));
}

// Eight coverages of neighbouring columns, blended like coverageInColumn.
inline __m256i blendRows(const CoverageBlend& w, std::int32_t column) {
    const auto widen = [column](std::int32_t row) {
        return _mm256_cvtepu8_epi32(
            _mm_loadl_epi64(reinterpret_cast<const __m128i*>(&EdgeCoverageTable[row][column])));
    };
    const __m256i low = widen(w.rowLow);
    const __m256i rise = _mm256_sub_epi32(widen(w.rowHigh), low);
    // low x weightLow + high x weightHigh = low x 65536 + rise x weightHigh
    const __m256i part = _mm256_srai_epi32(
        _mm256_add_epi32(_mm256_mullo_epi32(rise, _mm256_set1_epi32(w.weightHigh)),
                         _mm256_set1_epi32(32768)),
        16);
    return _mm256_add_epi32(low, part);
}

// All 32 coverages of a radius, by column, as bytes.
inline void coverageTable(const CoverageBlend& w, std::uint8_t* table) {
    for (std::int32_t c = 0; c < kCoverageColumns; c += kLanes)
        storeBytes(blendRows(w, c), table + c);
}

// Half a table of 32 bytes, in both halves of a vector.
inline __m256i halfTable(const std::uint8_t* half) {
    return _mm256_broadcastsi128_si256(_mm_loadu_si128(reinterpret_cast<const __m128i*>(half)));
}

// The paint of eight columns, 0 to 31 each; only the low byte of a lane is of use.
inline __m256i lookUp(__m256i low, __m256i high, __m256i column) {
    // Bit 4 of the column, moved to the top of its byte, picks the half.
    return _mm256_blendv_epi8(_mm256_shuffle_epi8(low, column), _mm256_shuffle_epi8(high, column),
                              _mm256_slli_epi32(column, 3));
}

// pen alpha x coverage / 255, the quotient of integers, exact for all pairs of bytes.
inline __m256i coverAlpha8(__m256i coverage, std::int32_t alpha) {
    const __m256i product = _mm256_mullo_epi32(coverage, _mm256_set1_epi32(alpha));
    return _mm256_srli_epi32(_mm256_mullo_epi32(product, _mm256_set1_epi32(32897)), 23);
}

// The mixing branch of the merge for eight 8-bit pixels. In single precision the truncated
// quotient equals that of integers for all numerators up to 65025 and weights up to 255.
__attribute__((noinline)) inline __m256i mixEight(__m256i old, __m256i oldAlpha, __m256i a,
                                                  const PF_Pixel& pen) {
    const __m256i byte = _mm256_set1_epi32(0xFF);
    const __m256i b = _mm256_srli_epi32(_mm256_mullo_epi32(_mm256_sub_epi32(byte, a), oldAlpha), 8);
    const __m256 wa = _mm256_cvtepi32_ps(a), wb = _mm256_cvtepi32_ps(b);
    const __m256 sum = _mm256_add_ps(wa, wb);
    const auto channel = [&](int shift, std::uint8_t penChannel) {
        const __m256 stored =
            _mm256_cvtepi32_ps(_mm256_and_si256(_mm256_srli_epi32(old, shift), byte));
        const __m256 numerator =
            _mm256_add_ps(_mm256_mul_ps(wa, _mm256_set1_ps(penChannel)), _mm256_mul_ps(stored, wb));
        return _mm256_slli_epi32(_mm256_cvttps_epi32(_mm256_div_ps(numerator, sum)), shift);
    };
    const __m256i color = _mm256_or_si256(
        _mm256_or_si256(channel(8, pen.red), channel(16, pen.green)), channel(24, pen.blue));
    return _mm256_or_si256(color, _mm256_max_epi32(a, oldAlpha));
}

// mergePixel on eight 8-bit pixels; lanes where a is 0 stay. `mixed` tells that a colour was
// mixed: only then does a pixel tell a repetition from a single merge.
inline __m256i mergeEight(__m256i old, __m256i a, __m256i color, const PF_Pixel& pen, bool& mixed) {
    const __m256i zero = _mm256_setzero_si256();
    const __m256i byte = _mm256_set1_epi32(0xFF);
    const __m256i oldAlpha = _mm256_and_si256(old, byte);
    const __m256i same = _mm256_cmpeq_epi32(_mm256_andnot_si256(byte, old), color);
    const __m256i white = _mm256_cmpeq_epi32(a, byte);
    const __m256i simple =
        _mm256_or_si256(_mm256_or_si256(same, _mm256_cmpeq_epi32(oldAlpha, zero)), white);
    // On empty pixels and on pixels of one colour the larger alpha stays.
    const __m256i grows = _mm256_or_si256(_mm256_cmpgt_epi32(a, oldAlpha), white);
    const __m256i result =
        _mm256_blendv_epi8(old, _mm256_or_si256(color, a), _mm256_and_si256(simple, grows));
    const __m256i mixes = _mm256_andnot_si256(simple, _mm256_cmpgt_epi32(a, zero));
    mixed = _mm256_testz_si256(mixes, mixes) == 0;
    if (!mixed) return result;
    return _mm256_blendv_epi8(result, mixEight(old, oldAlpha, a, pen), mixes);
}

// What the rows of a dab share, by depth. `room`: the row goes on for eight pixels at least, so
// that whole vectors may be read and written back; lanes without paint get what they had. (Masked
// stores are slow on some processors.)
template <class Depth>
struct RowMerge {
    using Pixel = typename Depth::Pixel;
    const Pixel& pen;
    const AlphaByCoverage<Depth>& alphas;

    __attribute__((always_inline)) void operator()(Pixel* pixels, std::int32_t, bool, __m256i paint,
                                                   int times) const {
        alignas(32) std::int32_t coverage[kLanes];
        _mm256_store_si256(reinterpret_cast<__m256i*>(coverage), paint);
        auto lanes = static_cast<unsigned>(_mm256_movemask_ps(
            _mm256_castsi256_ps(_mm256_cmpgt_epi32(paint, _mm256_setzero_si256()))));
        for (; lanes != 0; lanes &= lanes - 1) {
            const int lane = __builtin_ctz(lanes);
            const auto a = alphas[static_cast<std::size_t>(coverage[lane])];
            for (int i = 0; i < times; ++i) mergePixel<Depth>(pixels[lane], pen, a);
        }
    }
};

template <>
struct RowMerge<Depth8> {
    RowMerge(const PF_Pixel& p, const AlphaByCoverage<Depth8>&) : pen(p), color(colorOf(p)) {}

    // The colour in every lane, alpha 0.
    static __m256i colorOf(const PF_Pixel& p) {
        return _mm256_set1_epi32(p.red << 8 | p.green << 16 |
                                 static_cast<int>(unsigned{p.blue} << 24));
    }

    const PF_Pixel& pen;
    const __m256i color;

    __attribute__((always_inline)) void operator()(PF_Pixel* pixels, std::int32_t count, bool room,
                                                   __m256i paint, int times) const {
        if (room) [[likely]] {
            mergeVector(pixels, paint, times);
        } else {
            atEdge(pixels, count, paint, times);
        }
    }

    __attribute__((always_inline)) void mergeVector(PF_Pixel* pixels, __m256i paint,
                                                    int times) const {
        auto* vector = reinterpret_cast<__m256i*>(pixels);
        bool mixed = false;
        __m256i merged = mergeEight(_mm256_loadu_si256(vector), paint, color, pen, mixed);
        for (int i = 1; mixed && i < times; ++i) {
            merged = mergeEight(merged, paint, color, pen, mixed);
        }
        _mm256_storeu_si256(vector, merged);
    }

    __attribute__((noinline)) void atEdge(PF_Pixel* pixels, std::int32_t count, __m256i paint,
                                          int times) const {
        PF_Pixel edge[kLanes] = {};
        std::copy_n(pixels, count, edge);
        mergeVector(edge, paint, times);
        std::copy_n(edge, count, pixels);
    }
};

}  // namespace streakfall::avx2

#pragma GCC pop_options
