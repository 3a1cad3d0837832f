// What the rows of a dab share: paint for eight pixels, merged once or more often.
#pragma once

#include <type_traits>

#include "shareForLines/AlphaByCoverage.h"
#include "shareForLines/EightPixelsAvx2.h"

#pragma GCC push_options
#pragma GCC target("avx2")

namespace streakfall::avx2 {

// The paint of a pixel is its alpha in 8 bits, else its coverage, 256 inside of a dab. `room`:
// the row goes on for eight pixels at least, so that whole vectors may be read and written back;
// lanes without paint get what they had. (Masked stores are slow on some processors.)
template <class Depth>
struct RowMerge {
    using Pixel = typename Depth::Pixel;

    RowMerge(const Pixel& pen, const AlphaByCoverage<Depth>&) : eight(pen) {}

    __attribute__((always_inline)) void operator()(Pixel* pixels, std::int32_t count, bool room,
                                                   __m256i paint, int times) const {
        if (room) [[likely]] {
            mergeVector(pixels, paint, times);
        } else {
            atEdge(pixels, count, paint, times);
        }
    }

  private:
    __attribute__((always_inline)) void mergeVector(Pixel* pixels, __m256i paint, int times) const {
        const auto a = alphasOf(paint);
        auto merged = eight.load(pixels);
        bool changes = eight.merge(merged, a);
        for (int i = 1; changes && i < times; ++i) changes = eight.merge(merged, a);
        eight.store(pixels, merged);
    }

    __attribute__((always_inline)) typename EightPixels<Depth>::Alphas alphasOf(
        __m256i paint) const {
        if constexpr (std::is_same_v<Depth, Depth8>) {
            return paint;
        } else {
            return eight.alphas(paint);
        }
    }

    __attribute__((noinline)) void atEdge(Pixel* pixels, std::int32_t count, __m256i paint,
                                          int times) const {
        Pixel edge[kLanes] = {};
        std::copy_n(pixels, count, edge);
        mergeVector(edge, paint, times);
        std::copy_n(edge, count, pixels);
    }

    const EightPixels<Depth> eight;
};

}  // namespace streakfall::avx2

#pragma GCC pop_options
