#include "shareForLines/LargeDabShape.h"

#include <cmath>
#include <cstdlib>

#include "shareForLines/DiagonalsAvx2.h"

namespace streakfall {
LargeDabShape::State LargeDabShape::stateOf(std::int32_t X, std::int32_t Y) const {
    const std::int32_t u = 16 * X - centre.fx, v = 16 * Y - centre.fy;
    const std::int32_t n = u * u + v * v;
    const bool inside = n < limit;
    // The neighbour across the circle is one pixel on: (|v| + 16)^2 = v^2 + 32 |v| + 256.
    const auto straddles = [&](std::int32_t offset) {
        const std::int32_t change = inside ? 32 * std::abs(offset) : -32 * std::abs(offset);
        return (n + change + 256 < limit) != inside;
    };
    const bool flat = (v >= 0 ? flatBottom : flatTop).has(X);
    const bool steep = (u >= 0 ? steepRight : steepLeft).has(Y);
    if ((flat && straddles(v)) || (steep && straddles(u))) return kPlotted;
    return inside ? kInterior : kUntouched;
}

// The last |u| inside is the whole part of sqrt(limit - v^2 - 1), in double precision exact for
// numbers of 31 bits.
Range LargeDabShape::insideOf(std::int32_t Y) const {
    const std::int32_t v = 16 * Y - centre.fy, rest = limit - 1 - v * v;
    if (rest < 0) return {0, -1};
    const auto u = static_cast<std::int32_t>(std::sqrt(static_cast<double>(rest)));
    return {-((u - centre.fx) >> 4), (u + centre.fx) >> 4};
}

Range LargeDabShape::interiorOf(std::int32_t Y) const {
    const double offset = Y - centre.cy;
    // Flat arcs plot what the row behind, away from the middle, does not have inside.
    if (std::fabs(offset) > flatRowsFrom()) return insideOf(offset < 0 ? Y - 1 : Y + 1);
    Range row = insideOf(Y);
    // Steep arcs plot the last pixel inside.
    if (std::fabs(offset) < steepRowsTo()) return {row.from + 1, row.to - 1};
    while (!row.empty() && stateOf(row.from, Y) != kInterior) ++row.from;
    while (!row.empty() && stateOf(row.to, Y) != kInterior) --row.to;
    return row;
}

bool LargeDabShape::place(double x, double y, double r) {
    centre = quantiseCentre(x, y);
    radius = r;
    squared = r * r;
    limit = static_cast<std::int32_t>(std::ceil(256.0 * squared));
    // (d + 1) 16 + 1/2 with d = ((u^2 + v^2) / 256 - r^2) / (2 r).
    columnScale = static_cast<float>(kFine / (32.0 * r));
    columnBase = static_cast<float>(kFine * (16.5 + (limit - 256.0 * squared) / (32.0 * r)));
    return findArcEnds(*this);
}

}  // namespace streakfall
