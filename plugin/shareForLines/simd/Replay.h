// Replay<Depth>: the paints of one pen on eight pixels, one after the other.
//
// For pixels on which a single merge of the largest coverage does not tell what all the paints
// leave, because they hold another colour. In 8 and 16 bits:
//
// - Pixels that mix no colours (empty, of the pen's colour, or reached by the full alpha) have
//   what they should from the merge of the largest coverage and take it over at the end.
// - The other pixels never see the full alpha nor become empty: they are MixedPixels.
#pragma once

#include "shareForLines/simd/Begin.h"
#include "shareForLines/simd/MixedPixels.h"

namespace streakfall::avx2 {

template <class Depth>
class Replay {
  public:
    using Pixels = typename EightPixels<Depth>::Pixels;

    // largest: of all coverages to be painted, by pixel. The pen outlives the replay.
    Replay(const typename Depth::Pixel& pen, const Pixels& old, __m256i largest)
        : eight(pen), mixed(pen, old), byLargest(old) {
        mixes = eight.mergeSimply(byLargest, eight.edgeAlphas(largest));
    }

    // False when the largest coverage is all that counts: then it need not be painted.
    bool isNeeded() const { return anyLane(mixes); }

    // Coverages 0 to 255, painted one or more times.
    inline void paint(__m256i coverage, std::int32_t times) {
        mixed.merge(eight.edgeAlphas(coverage), times);
    }

    Pixels result() const { return EightPixels<Depth>::where(mixes, mixed.result(), byLargest); }

  private:
    const EightPixels<Depth> eight;
    MixedPixels<Depth> mixed;
    Pixels byLargest;
    __m256i mixes;  // lanes that mix colours
};

template <>
class Replay<DepthFloat> {
  public:
    Replay(const PF_PixelFloat& pen, const PixelsFloat& old, __m256i largest)
        : eight(pen), merged(pen, old), byLargest(old) {
        mixes = eight.merge(byLargest, eight.alphas(largest));
        // The alpha can be a hair below 0, and falls with coverage then.
        if (!(pen.alpha > 0)) mixes = true;
    }

    bool isNeeded() const { return mixes; }
    void paint(__m256i coverage, std::int32_t times) {
        merged.merge(eight.alphas(coverage), times);
    }
    const PixelsFloat& result() const { return mixes ? merged.result() : byLargest; }

  private:
    const EightPixels<DepthFloat> eight;
    MergedPixels<DepthFloat> merged;
    PixelsFloat byLargest;
    bool mixes;
};

}  // namespace streakfall::avx2

#include "shareForLines/simd/End.h"
