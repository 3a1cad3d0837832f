#include "shareForLines/LargeDabShape.h"

#include <cmath>
#include <cstdlib>

namespace streakfall {
namespace {

// The last steps of an arc that are walked, in pixels along one axis.
constexpr double kLastSteps = 1.5;

}  // namespace

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
    Range row = insideOf(Y);
    const double offset = Y - centre.cy;
    if (std::fabs(offset) > flatRowsFrom()) {
        // Plotted is what the row beyond does not have inside: long ends at the top and bottom.
        const Range beyond = insideOf(offset < 0 ? Y - 1 : Y + 1);
        if (beyond.empty()) return beyond;
        row = {beyond.from, beyond.to};
    }
    while (!row.empty() && stateOf(row.from, Y) != kInterior) ++row.from;
    while (!row.empty() && stateOf(row.to, Y) != kInterior) --row.to;
    return row;
}

// Walks the rest of one arc from a pixel that the walk passes, and the first step of the next.
LargeDabShape::Meeting LargeDabShape::meeting(int arc, std::int32_t x, std::int32_t y,
                                              std::int64_t k) const {
    while (kArcs[arc].runs(centre, x, y)) kArcs[arc].step(centre, k, x, y);
    Meeting m{x, y, x, y};
    kArcs[arc + 1].step(centre, k, m.nextX, m.nextY);
    return m;
}

// True when the circle passes between a pixel of the walk and its pair.
bool LargeDabShape::plotsAsWalked(int arc, std::int32_t x, std::int32_t y) const {
    const bool inside = isInside(x, y);
    const std::int32_t side = inside ? 1 : -1;
    return isInside(x + side * kArcs[arc].outwardX, y + side * kArcs[arc].outwardY) != inside;
}

bool LargeDabShape::findArcEnds() {
    const std::int64_t k = decisionConstant(centre, radius);
    const double reach = radius * kDiagonal - kLastSteps;
    const auto across = [this](double from) { return std::sqrt(squared - from * from); };
    const auto column = [this](double offset) { return roundHalfUp(centre.cx + offset); };
    const auto row = [this](double offset) { return roundHalfUp(centre.cy + offset); };

    // A pixel of the walk shortly before each diagonal: on the flat arcs the row follows from
    // the column, on the steep ones the column from the row.
    const std::int32_t right = column(reach), left = column(-reach);
    const std::int32_t lower = row(reach), upper = row(-reach);
    const Meeting meetings[4] = {
        meeting(0, right, row(across(right - centre.cx)), k),
        meeting(2, column(across(upper - centre.cy)), upper, k),
        meeting(4, left, row(-across(left - centre.cx)), k),
        meeting(6, column(-across(lower - centre.cy)), lower, k),
    };
    flatBottom = {meetings[3].x + 1, meetings[0].x};
    flatTop = {meetings[2].x, meetings[1].x - 1};
    steepRight = {meetings[1].y, meetings[0].y - 1};
    steepLeft = {meetings[2].y + 1, meetings[3].y};
    for (int i = 0; i < 4; ++i) {
        const Meeting& m = meetings[i];
        if (!plotsAsWalked(2 * i, m.x, m.y) || !plotsAsWalked(2 * i + 1, m.nextX, m.nextY)) {
            return false;
        }
    }
    return true;
}

bool LargeDabShape::place(double x, double y, double r) {
    centre = quantiseCentre(x, y);
    radius = r;
    squared = r * r;
    limit = static_cast<std::int32_t>(std::ceil(256.0 * squared));
    // (d + 1) 16 + 1/2 with d = ((u^2 + v^2) / 256 - r^2) / (2 r).
    columnScale = static_cast<float>(kFine / (32.0 * r));
    columnBase = static_cast<float>(kFine * (16.5 + (limit - 256.0 * squared) / (32.0 * r)));
    return findArcEnds();
}

}  // namespace streakfall
