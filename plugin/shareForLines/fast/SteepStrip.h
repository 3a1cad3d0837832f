// SteepStrip: which columns a strip along a straight line crosses in some rows.
#pragma once

#include <algorithm>
#include <cmath>
#include <initializer_list>

#include "lines/LineRecord.h"
#include "shareForLines/path/LineWalk.h"

namespace streakfall {

class SteepStrip {
  public:
    // From one distance off the line's axis to another, pixels to the side of (-uy, ux).
    SteepStrip(const LineWalk& walk, const LineRecord& line, double from, double to)
        : x0(line.x0), y0(line.y0), ux(walk.directionX()), uy(walk.directionY()), sides{from, to} {}

    // False for lines so flat that a row holds most of the strip.
    bool isSteep() const { return std::fabs(uy) > 0.1; }

    struct Columns {
        double from, to;
    };
    // Of a steep strip, between these rows.
    Columns columnsOf(double top, double bottom) const {
        constexpr double kFar = 1e6;
        Columns columns{kFar, -kFar};
        for (const double y : {top - y0, bottom - y0}) {
            for (const double side : sides) {
                const double x = std::clamp(x0 + (ux * y - side) / uy, -kFar, kFar);
                columns = {std::min(columns.from, x), std::max(columns.to, x)};
            }
        }
        return columns;
    }

  private:
    double x0, y0, ux, uy;
    double sides[2];
};

}  // namespace streakfall
