// ArcEnds: which columns and rows the arcs of a large dab's outline take.
//
// The walk round a large dab visits every column of its flat arcs and every row of its steep ones,
// and plots there the two pixels that straddle the circle, the inner one and its outward neighbour.
// So a pixel is
//
//   plotted   inside, with its outward neighbour outside, or outside, with its inward one inside,
//             along y in a column of a flat arc, along x in a row of a steep arc (a pixel where
//             a flat and a steep arc meet may be plotted by both, twice then);
//   interior  inside and not plotted;
//   untouched otherwise.
//
// Inside is exact in integers: with (u, v) the pixel's offset from the quantised centre in 1/16
// pixels, u^2 + v^2 < 256 r^2, where r^2 is the rounded product that the distance formula forms.
// Where the arcs meet, at 45 degrees, is found by walking their last few steps.
#pragma once

#include "shareForLines/disc/CirclePath.h"
#include "shareForLines/disc/Range.h"

namespace streakfall {

struct DabPixel {
    std::int32_t x, y;  // dab coordinates
};

struct ArcEnds {
    ArcEnds() = default;
    // 5 <= r <= 2048. Of the centre only the fractions count. Needs a processor with AVX2.
    ArcEnds(const DabCentre& centre, double r);

    // Of a pair of arcs, dab coordinates.
    Range flatBottom, flatTop;    // columns
    Range steepLeft, steepRight;  // rows
    // One dab in two dozen at radius 5, in thousands at 6 and none from 6.1 on has a pixel where
    // two arcs meet that the walk plots although the circle passes within it and its pair. All else
    // is as told above, but that the pixel behind the pair is plotted by one of the arcs, not by
    // both.
    bool isOdd;
    DabPixel extra;  // of an odd dab: outside, and plotted
    DabPixel once;   // inside, and plotted once
};

}  // namespace streakfall
