// Colour jitter: gives each line a colour of its own, from the line's seed.
#pragma once

#include <cstdint>

#include "shareForLines/canvas/PixelDepth.h"

namespace streakfall {

// Largest shifts: hue as a part of a full turn, saturation and value as ratios.
struct JitterAmounts {
    double hue = 0;
    double saturation = 0;
    double value = 0;
};

// Hue, saturation and value as parts of one.
struct Hsv {
    double h, s, v;
};

struct Rgb {
    double r, g, b;
};

// The three shifts of a line: always three draws, in this order. randomSeed counts only as zero
// or not zero.
Hsv drawJitter(const JitterAmounts& amounts, std::uint32_t lineSeed, std::int32_t randomSeed);

// Hue wraps round the circle; saturation and value are reflected at 0 and 1.
Rgb shiftColor(const Hsv& color, const Hsv& shift);

// Writes the jittered colour of `base`; alpha passes through. Every line starts from the same
// base, so shifts never accumulate. The way to hue and back truncates: in 8 bits a channel may
// come out one step lower even with all amounts 0, and that is the colour that is drawn.
template <class Depth>
void jitterColor(typename Depth::Pixel& out, const typename Depth::Pixel& base,
                 const JitterAmounts& amounts, std::uint32_t lineSeed, std::int32_t randomSeed);

}  // namespace streakfall
