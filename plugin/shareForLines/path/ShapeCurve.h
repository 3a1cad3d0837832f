// ShapeCurve: walks a cubic Bezier curve at equal steps of arc length.
//
// A work object that lives while a ramp curve is made. The arc length is the sum of the chords
// between 100 sample points at equal steps of the curve parameter.
#pragma once

#include <array>
#include <cstdint>

namespace streakfall {

inline constexpr int kShapeSamples = 100;

struct ShapeCurve {
    void setCurve(double x0, double y0, double x1, double y1, double x2, double y2, double x3,
                  double y3);

    // Positions and step as parts of the whole length; positions are limited to 0 to 1. Returns
    // 516 when the step is not above 0, else 0.
    std::int32_t beginWalk(double start, double end, double step, bool closeAtEnd);

    // Moves to the next point; false when there is none.
    bool nextPoint();

    double pointX = 0, pointY = 0;  // the point that the walk stands on
    double curveParameter = 0;
    double arcFraction = 0;  // its arc position as a part of the whole length

  private:
    void deliver();

    std::array<double, kShapeSamples> cumulativeLength{};  // from the start to each sample
    // x(t) = ((a t + b) t + c) t + d
    std::array<double, 4> coefficientsX{}, coefficientsY{};
    double walkStart = 0, walkEnd = 0, walkStep = 0, walkArc = 0;
    std::int32_t walkIndex = -1;  // sample interval that holds walkArc; -1 before the first point
    bool closeAtEnd = false;      // the end point is still to be delivered
    double inverseLength = 1;
};

}  // namespace streakfall
