// The outline of a large dab: a midpoint walk round the circle, counterclockwise on the screen,
// over a centre quantised to 1/16 pixel.
//
//   D(p, q) = 64 p^2 - 8 fx p + 64 q^2 - 8 fy q + K
//
// is 64 times (squared distance from the centre less r^2), with the constant rounded to an
// integer, exact at every half-integer point. Each step moves one pixel along the arc's major
// axis and asks D at the midpoint of the two candidates whether the minor coordinate follows.
#pragma once

#include <cmath>
#include <cstdint>

#include "lines/Convert.h"

namespace streakfall {

// A dab's centre, quantised. Dab coordinates are relative to pixel (xi, yi).
struct DabCentre {
    std::int32_t xi, yi;  // pixel that holds the centre
    std::int32_t fx, fy;  // rest in 1/16 pixels, 0 to 16
    double cx, cy;        // the same in pixels: the centre in dab coordinates

    bool operator==(const DabCentre&) const = default;
};

inline std::int32_t roundHalfUp(double v) { return truncToI32(std::floor(v + 0.5)); }

inline DabCentre quantiseCentre(double x, double y) {
    DabCentre c;
    c.xi = truncToI32(std::floor(x));
    c.yi = truncToI32(std::floor(y));
    c.fx = roundHalfUp((x - c.xi) * 16.0);
    c.fy = roundHalfUp((y - c.yi) * 16.0);
    c.cx = 0.0625 * c.fx;
    c.cy = 0.0625 * c.fy;
    return c;
}

// Signed distance of dab pixel (X, Y), close to pixels near the circle: negative inside.
inline double signedDistance(const DabCentre& c, double r, std::int32_t X, std::int32_t Y) {
    const double dx = X - c.cx, dy = Y - c.cy;
    return (dx * dx + dy * dy - r * r) / (2.0 * r);
}

// One of the eight arcs. Runs while u * whileU + v * whileV > 0, where (u, v) is the pixel's
// offset from the centre in 1/16 pixels.
struct Arc {
    std::int8_t whileU, whileV;
    std::int8_t majorX, majorY;      // every step
    std::int8_t minorX, minorY;      // the candidate that changes the minor coordinate
    bool minorWhenInside;            // taken when D(midpoint) < 0, else when D >= 0
    std::int8_t outwardX, outwardY;  // towards the pair pixel when the walk is inside the circle

    bool runs(const DabCentre& c, std::int32_t X, std::int32_t Y) const {
        return whileU * (16 * X - c.fx) + whileV * (16 * Y - c.fy) > 0;
    }

    // One step from (X, Y). k: decisionConstant of the circle.
    void step(const DabCentre& c, std::int64_t k, std::int32_t& X, std::int32_t& Y) const {
        // The midpoint of the two candidates, doubled.
        const std::int64_t p = 2 * (X + majorX) + minorX;
        const std::int64_t q = 2 * (Y + majorY) + minorY;
        const std::int64_t d = 16 * p * p - 4 * c.fx * p + 16 * q * q - 4 * c.fy * q + k;
        const bool minor = (d < 0) == minorWhenInside;
        X += majorX + (minor ? minorX : 0);
        Y += majorY + (minor ? minorY : 0);
    }
};

inline constexpr Arc kArcs[8] = {
    {-1, 1, 1, 0, 0, -1, false, 0, 1},   // v > u
    {0, 1, 0, -1, 1, 0, true, 1, 0},     // v > 0
    {1, 1, 0, -1, -1, 0, false, 1, 0},   // u > -v
    {1, 0, -1, 0, 0, -1, true, 0, -1},   // u > 0
    {1, -1, -1, 0, 0, 1, false, 0, -1},  // u > v
    {0, -1, 0, 1, -1, 0, true, -1, 0},   // v < 0
    {-1, -1, 0, 1, 1, 0, false, -1, 0},  // v < -u
    {-1, 0, 1, 0, 0, 1, true, 0, 1},     // u < 0
};

// K of the decision value.
inline std::int64_t decisionConstant(const DabCentre& c, double r) {
    return roundHalfUp(((-16.0 * r) * r + c.fx * c.cx + c.fy * c.cy) * 4.0);
}

// Calls visit(X, Y, arc) at every pixel of the walk, in order. The walk begins at the bottom of
// the circle; the start itself is not visited, it comes back, or nearly, at the end.
template <class Visit>
void walkCircle(const DabCentre& c, double r, Visit&& visit) {
    const std::int64_t k = decisionConstant(c, r);
    std::int32_t X = truncToI32(std::ceil(c.cx));
    std::int32_t Y = roundHalfUp(c.cy + std::sqrt(r * r - (X - c.cx) * (X - c.cx)));
    for (const Arc& arc : kArcs) {
        while (arc.runs(c, X, Y)) {
            arc.step(c, k, X, Y);
            visit(X, Y, arc);
        }
    }
}

}  // namespace streakfall
