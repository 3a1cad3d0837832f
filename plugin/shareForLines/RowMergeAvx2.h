// Merges a dab's rows, eight pixels at a time.
#pragma once

#include "shareForLines/EightPixelsAvx2.h"

#pragma GCC push_options
#pragma GCC target("avx2")

namespace streakfall::avx2 {

// `room`: the row goes on for eight pixels at least, so that whole vectors may be read and written
// back; lanes without paint get what they had. (Masked stores are slow on some processors.)
template <class Depth>
struct RowMerge {
    using Pixel = typename Depth::Pixel;

    explicit RowMerge(const Pixel& pen) : eight(pen) {}

    // The first `count` pixels; of the others coverage is 0.
    __attribute__((always_inline)) void operator()(Pixel* pixels, std::int32_t count, bool room,
                                                   __m256i coverage) const {
        if (room) [[likely]] {
            mergeVector(pixels, coverage);
        } else {
            atEdge(pixels, count, coverage);
        }
    }

  private:
    __attribute__((always_inline)) void mergeVector(Pixel* pixels, __m256i coverage) const {
        auto merged = eight.load(pixels);
        eight.merge(merged, eight.alphas(coverage));
        eight.store(pixels, merged);
    }

    __attribute__((noinline)) void atEdge(Pixel* pixels, std::int32_t count,
                                          __m256i coverage) const {
        Pixel edge[kLanes] = {};
        std::copy_n(pixels, count, edge);
        mergeVector(edge, coverage);
        std::copy_n(edge, count, pixels);
    }

    const EightPixels<Depth> eight;
};

}  // namespace streakfall::avx2

#pragma GCC pop_options
