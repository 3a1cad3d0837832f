// The one blend of the drawing code: paint of alpha a and the pen's colour over stored alpha o.
//
//   b = weight left to the old colour,  s = a + b
//   colour = (pen x a + stored x b) / s,  alpha = max(a, o)
//
// Colour mixes as paint over old paint, alpha is never summed: overlapping dabs of one colour
// leave no seam. Straight channel values: no gamma, no premultiplication.
#pragma once

#include "shareForLines/canvas/PixelDepth.h"

namespace streakfall {

// The caller guarantees that `pixel` lies in the buffer. The alpha of `pen` is not read.
template <class Depth>
inline void mergePixel(typename Depth::Pixel& pixel, const typename Depth::Pixel& pen,
                       typename Depth::Channel a) {
    const typename Depth::Channel o = pixel.alpha;
    if (a == 0) return;
    if (o == 0 || a == Depth::kWhite) {
        pixel = pen;
        pixel.alpha = a;
        return;
    }
    if (pen.red == pixel.red && pen.green == pixel.green && pen.blue == pixel.blue) {
        pixel.alpha = a > o ? a : o;
        return;
    }
    const auto b = Depth::weightLeft(a, o);
    pixel.red = Depth::mix(pen.red, a, pixel.red, b);
    pixel.green = Depth::mix(pen.green, a, pixel.green, b);
    pixel.blue = Depth::mix(pen.blue, a, pixel.blue, b);
    pixel.alpha = a > o ? a : o;
}

}  // namespace streakfall
