// StrokeShape: a ramp curve as a polyline, read once from front to back along a line.
//
// inShape rises from (0, 0) to (1, 1), outShape falls from (0, 1) to (1, 0); both are the same in
// every render and depth. Owner: the Stroke.
#pragma once

#include <cstddef>
#include <vector>

namespace streakfall {

struct ShapePoint {
    double position;  // along the ramp, 0 to 1, ascending
    double value;     // factor, 0 to 1
};

// The rising curve is concave but for its start, where its slope grows from 1.2685 to 1.3388 within
// 0.067. It lies below the least concave curve above it by less than this part of its height.
inline constexpr double kRampBow = 7e-4;

struct StrokeShape {
    std::vector<ShapePoint> points;
    std::size_t cursor = 0;  // moves forward only; set to 0 at the start of a line
};

// The curve's value at u. Within a line u may not fall.
inline double shapeValue(StrokeShape& shape, double u) {
    const std::vector<ShapePoint>& p = shape.points;
    std::size_t i = shape.cursor;
    while (i < p.size() && p[i].position < u) ++i;
    shape.cursor = i;
    if (i == p.size()) return p.empty() ? 0.0 : p.back().value;
    if (i == 0) {
        return u <= 0.0 ? p[0].value : p[0].value * (u / p[0].position);
    }
    const ShapePoint& a = p[i - 1];
    const ShapePoint& b = p[i];
    return a.value + ((u - a.position) / (b.position - a.position)) * (b.value - a.value);
}

}  // namespace streakfall
