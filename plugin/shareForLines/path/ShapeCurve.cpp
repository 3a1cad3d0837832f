#include "shareForLines/path/ShapeCurve.h"

#include <algorithm>
#include <cmath>

namespace streakfall {
namespace {

constexpr int kLastSample = kShapeSamples - 1;
constexpr std::int32_t kBadStep = 516;

using SampleTable = std::array<double, kShapeSamples>;

// Made at compile time, so that renders on several threads share it without a guard.
constexpr SampleTable makeSampleParameters() {
    SampleTable table{};
    for (int k = 0; k < kShapeSamples; ++k) {
        table[static_cast<std::size_t>(k)] = k / 99.0;
    }
    return table;
}
constexpr SampleTable sampleParameter = makeSampleParameters();

std::array<double, 4> cubic(double p0, double p1, double p2, double p3) {
    return {p3 - p0 + (p1 - p2) * 3.0, (p2 + p0) * 3.0 - 6.0 * p1, (p1 - p0) * 3.0, p0};
}

double evaluate(const std::array<double, 4>& c, double t) {
    return ((c[0] * t + c[1]) * t + c[2]) * t + c[3];
}

}  // namespace

void ShapeCurve::setCurve(double x0, double y0, double x1, double y1, double x2, double y2,
                          double x3, double y3) {
    coefficientsX = cubic(x0, x1, x2, x3);
    coefficientsY = cubic(y0, y1, y2, y3);
    double lastX = x0, lastY = y0, sum = 0.0;
    for (std::size_t k = 0; k < kShapeSamples; ++k) {
        const double x = evaluate(coefficientsX, sampleParameter[k]);
        const double y = evaluate(coefficientsY, sampleParameter[k]);
        sum += std::sqrt((x - lastX) * (x - lastX) + (y - lastY) * (y - lastY));
        cumulativeLength[k] = sum;
        lastX = x;
        lastY = y;
    }
    inverseLength = sum == 0.0 ? 1.0 : 1.0 / sum;
}

std::int32_t ShapeCurve::beginWalk(double start, double end, double step, bool close) {
    if (!(step > 0.0)) return kBadStep;
    const double whole = cumulativeLength[kLastSample];
    walkStart = std::clamp(start, 0.0, 1.0) * whole;
    walkEnd = std::clamp(end, 0.0, 1.0) * whole;
    walkStep = step * whole;
    pointX = pointY = -1.0;
    walkIndex = -1;
    closeAtEnd = close;
    return 0;
}

void ShapeCurve::deliver() {
    while (walkIndex + 1 < kLastSample &&
           walkArc >= cumulativeLength[static_cast<std::size_t>(walkIndex) + 1]) {
        ++walkIndex;
    }
    const auto k = static_cast<std::size_t>(walkIndex);
    const double from = cumulativeLength[k], to = cumulativeLength[k + 1];
    double t = sampleParameter[k];
    if (to != from) t += (sampleParameter[k + 1] - t) * (walkArc - from) / (to - from);
    curveParameter = t;
    arcFraction = walkArc * inverseLength;
    pointX = evaluate(coefficientsX, t);
    pointY = evaluate(coefficientsY, t);
}

bool ShapeCurve::nextPoint() {
    if (walkIndex < 0) {
        walkArc = walkStart;
        walkIndex = 0;
    } else {
        walkArc = walkArc + walkStep;
    }
    if (walkArc >= walkEnd) {
        if (!closeAtEnd) return false;
        closeAtEnd = false;
        walkArc = walkEnd;
        if (walkEnd >= cumulativeLength[kLastSample]) {
            const auto& x = coefficientsX;
            const auto& y = coefficientsY;
            curveParameter = 1.0;
            arcFraction = 1.0;
            pointX = x[0] + x[1] + x[2] + x[3];
            pointY = y[0] + y[1] + y[2] + y[3];
            return true;
        }
    }
    deliver();
    return true;
}

}  // namespace streakfall
