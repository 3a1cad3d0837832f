// LargeDabShape: what a large dab does to any one pixel, without walking its outline.
//
// The walk visits every column of its flat arcs and every row of its steep ones, and plots there
// the two pixels that straddle the circle, the inner one and its outward neighbour. So a pixel is
//
//   plotted   inside, with its outward neighbour outside, or outside, with its inward one inside,
//             along y in a column of a flat arc, along x in a row of a steep arc (a pixel where
//             a flat and a steep arc meet may be plotted by both, twice then);
//   interior  inside and not plotted;
//   untouched otherwise.
//
// Inside is exact in integers: with (u, v) the pixel's offset from the quantised centre in 1/16
// pixels, u^2 + v^2 < 256 r^2, where r^2 is the rounded product that the distance formula forms.
// Where the arcs meet is found by walking their last few steps (DiagonalsAvx2).
//
// About one dab in a thousand has a pixel where two arcs meet that the walk plots although the
// circle passes beyond it and its pair: place() tells, and such a dab is painted by walking.
#pragma once

#include <cmath>
#include <cstdint>

#include "shareForLines/CirclePath.h"
#include "shareForLines/Range.h"

namespace streakfall {

struct LargeDabShape {
    static constexpr double kMaxRadius = 2048.0;  // near the circle u^2 + v^2 stays about 2^30
    static constexpr double kFine = 4096.0;       // parts of a table column
    static constexpr double kDiagonal = 0.70710678118654752;  // sine and cosine of 45 degrees

    enum State { kUntouched, kPlotted, kInterior };

    // 5 <= r <= kMaxRadius. False when the description does not hold for this dab. Needs a
    // processor with AVX2.
    bool place(double x, double y, double r);

    // What the dab does to dab pixel (X, Y).
    State stateOf(std::int32_t X, std::int32_t Y) const;

    // The interior columns of dab row Y; from > to when it has none.
    Range interiorOf(std::int32_t Y) const;

    DabCentre centre;
    double radius;
    double squared;      // r^2, rounded
    std::int32_t limit;  // u^2 + v^2 is inside below it
    // The table column of a pixel is the whole part of (u^2 + v^2 - limit) columnScale +
    // columnBase, as long as that is not too near a whole number for single precision. In 4096ths.
    float columnScale, columnBase;
    // Columns, or rows, of a pair of arcs, dab coordinates.
    Range flatBottom, flatTop;    // columns
    Range steepLeft, steepRight;  // rows

    bool isInside(std::int32_t X, std::int32_t Y) const {
        const std::int32_t u = 16 * X - centre.fx, v = 16 * Y - centre.fy;
        return u * u + v * v < limit;
    }

    // Rows farther off the centre's are crossed by flat arcs only, nearer than steepRowsTo by
    // steep arcs only: the arcs meet at r / sqrt(2), within two pixels.
    double flatRowsFrom() const { return radius * kDiagonal + 3.0; }
    double steepRowsTo() const { return radius * kDiagonal - 3.0; }

  private:
    Range insideOf(std::int32_t Y) const;
};

}  // namespace streakfall
