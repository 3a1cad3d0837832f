// When the order of paints does not count, and how often one is repeated.
//
// mergePixel gives a pixel, for paint of alpha a in the pen's colour over stored alpha o:
//
//   empty (o = 0) or a = white      the pen's colour at a
//   of the pen's colour             the pen's colour at max(a, o)
//   any other                       a mixture of both colours at max(a, o)
//
// So, of paints in one colour:
//
//  1. On a pixel that is empty or of the pen's colour, any sequence of paints, with any repetition,
//     leaves the pen's colour at the largest of their alphas and its own (isPlain). For merging is
//     a maximum there, and a maximum knows no order.
//  2. A pixel that gets white once ends as the pen at white, whatever it held and whatever comes
//     before and after: white replaces all, and then 1. holds, with the largest alpha there is.
//  3. On any other pixel every paint counts, in its order, until the colour rests: until a merge
//     leaves every channel as it was (EightPixels::rests); from there on 1. holds for the alpha.
//  4. Of the paints of one dab or more, the largest alpha is that of the largest coverage, as long
//     as the pen's alpha is above 0 and no coverage gives more than the inside, where the pen's own
//     alpha counts (insideGivesMost).
//  5. In 8 and 16 bits, where a merge keeps the part w = b / (a + b) of a difference, b being the
//     weight left to the stored colour: a channel that lies d above the pen's comes to
//     trunc(d w) above it, one d below to d w rounded up. So no merge brings a channel past the
//     pen's or farther off, and as long as b is not 0 one that lies below stays below. Merges that
//     at least halve a difference (w up to 1/2, that is b up to a) bring any channel to the pen's,
//     or from below to a step below it, once there are kMergesToRest of them, whatever other merges
//     come before, between and behind.
//
// A way of painting that rests on one of these asserts it with the functions below.
#pragma once

#include <bit>
#include <cassert>
#include <cstdint>

#include "shareForLines/canvas/PixelDepth.h"

namespace streakfall {

// The pixel takes paint of the pen's colour as a maximum of alphas.
template <class Depth>
bool isPlain(const typename Depth::Pixel& pixel, const typename Depth::Pixel& pen) {
    return pixel.alpha == 0 ||
           (pixel.red == pen.red && pixel.green == pen.green && pixel.blue == pen.blue);
}

// True when no coverage gives more than the pen's own alpha. In float 255 / 255 of some alphas is
// rounded up, and the edge of a dab can leave more than its inside.
template <class Depth>
bool insideGivesMost(const typename Depth::Pixel& pen) {
    return pen.alpha > 0 && Depth::coverAlpha(pen.alpha, 255) <= pen.alpha;
}

// As many merges that halve a difference bring any colour to rest (5.): the largest, white, to a
// step.
template <class Depth>
inline constexpr std::int32_t kMergesToRest = std::bit_width(unsigned{Depth::kWhite});

// True when merges at alphas from `least` on halve a difference, and those up to `most` leave some
// weight to the stored colour (5.). Stored alphas lie from leastStored to mostStored. 8 and 16
// bits.
template <class Depth>
bool halvesDifference(typename Depth::Channel least, typename Depth::Channel most,
                      typename Depth::Channel leastStored, typename Depth::Channel mostStored) {
    return Depth::weightLeft(least, mostStored) <= least &&
           Depth::weightLeft(most, leastStored) > 0;
}

// Paints of one pen, of which this is the largest alpha, as one (1. and 2.).
template <class Depth>
void raiseTo(typename Depth::Pixel& pixel, const typename Depth::Pixel& pen,
             typename Depth::Channel largest) {
#ifdef STREAKFALL_CHECKS
    assert(largest == Depth::kWhite || isPlain<Depth>(pixel, pen));
#endif
    if (!(largest > pixel.alpha) && largest != Depth::kWhite) return;
    pixel = pen;
    pixel.alpha = largest;
}

}  // namespace streakfall
