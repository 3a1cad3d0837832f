// Where hollow dabs of a line may leave pixels open for good.
//
// A pixel inside a hollow dab stays as it is until a solid dab paints it, or some dab is the first
// to have it inside, or the last. A hollow row keeps kHollowRim pixels at each end; so the pixel
// is painted when the end that lets it in, or the one that lets it out, moves by no more than that
// from dab to dab. Near the top and the bottom of a dab ends move fast; rows within kWholeDepth of
// them are filled whole.
//
// A pixel at the distance h from a straight line's axis comes in and goes out where the circle is h
// off the axis. That tells the rows, for each h, and so whether both ends can be fast there. This
// answers for strips along a whole line; OpenPixels finds the pixels.
#pragma once

#include <cstdint>
#include <vector>

#include "shareForLines/path/StrokeShape.h"

namespace streakfall {

// How far the end of a row of a dab may move along it in a step (x, y), 0 or more, pixels, when the
// radius changes from r - growth to r, or back. depth: of the row below the circle's top.
double endMoves(double r, double growth, double depth, double x, double y);

inline constexpr double kFarthestEnd = 2.95;  // an end that moves by less is slow; below kHollowRim
inline constexpr double kLeastDepth = 2.0;    // of a hollow row and the circle of the row beyond

// What of a line counts for it.
struct HollowLine {
    double ux, uy;  // unit vector of its direction
    double turn;    // that a wave turns the pen from there, radians either way; 0 for none
    double radius;  // the full one, pixels
    const std::vector<ShapePoint>* curve;  // of a ramp, rising
    // The in ramp, and the hollow part of the out ramp: radius at the thin end, the curve's
    // position from which on it counts, and pixels of the line that a whole ramp takes, 0 where
    // there is none.
    struct Ramp {
        double thin, from, length;
    } in, out;
    bool beginsHollow;  // with a dab inside of which pixels were never outside
};

// The stroke cut along its axis into strips of the same width, from the side of (uy, -ux) on: a bit
// for each in which a pixel inside a hollow dab may not be painted at the pen's alpha by another.
// Of a line with a turn all, when there is one.
using OpenStrips = std::uint32_t;
inline constexpr int kStrips = 32;
OpenStrips stripsThatMayStayOpen(const HollowLine& line);

}  // namespace streakfall
