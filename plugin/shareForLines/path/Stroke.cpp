#include "shareForLines/path/Stroke.h"

#include <algorithm>
#include <cmath>

#include "lines/RandomSequence.h"
#include "lines/Trigonometry.h"
#include "share/util/AEException.h"
#include "shareForLines/path/ShapeCurve.h"

namespace streakfall {
namespace {

constexpr double kBias = 0.15;
constexpr double kQuarterPi = 0.7853981633974483;
constexpr double kArcStep = 0.01;

// The rising curve, common to both shapes: a cubic from (0, 0) to (1, 1), as a polyline of equal
// arc steps.
std::int32_t makeRisingCurve(double bias, std::vector<ShapePoint>& points) {
    const double phi = (1.0 + bias) * kQuarterPi;
    const double p = 0.2;
    const double q = 0.2 + bias * 0.6000000000000001;
    const auto [sine, cosine] = sineCosine(phi);
    ShapeCurve curve;
    curve.setCurve(0.0, 0.0, p * cosine, p * sine, 1.0 - q, 1.0, 1.0, 1.0);
    const std::int32_t error = curve.beginWalk(0.0, 1.0, kArcStep, true);
    if (error != 0) return error;
    points.clear();
    while (curve.nextPoint()) {
        points.push_back({std::min(1.0, curve.pointX), std::min(1.0, curve.pointY)});
    }
    points.front() = {0.0, 0.0};
    points.back() = {1.0, 1.0};
    return 0;
}

}  // namespace

StrokeForm::StrokeForm() : waveState(seedInitial) {
    std::int32_t error = CreateInShape(kBias);
    if (error == 0) error = CreateOutShape(kBias);
    if (error != 0) {
        throw AEUtil::AEException(error, ".\\shareForLines/Stroke", 177,
                                  "faile CreateInShape/CreateOutShape");
    }
}

std::int32_t StrokeForm::CreateInShape(double bias) {
    return makeRisingCurve(bias, inShape.points);
}

std::int32_t StrokeForm::CreateOutShape(double bias) {
    std::vector<ShapePoint> rising;
    const std::int32_t error = makeRisingCurve(bias, rising);
    if (error != 0) return error;
    // Mirrored: positions are summed from the far end, so that the value at u is the rising
    // curve's at 1 - u.
    std::vector<ShapePoint>& points = outShape.points;
    points.clear();
    points.reserve(rising.size());
    double sum = 0.0, previous = 1.0;
    for (std::size_t i = rising.size() - 1; i >= 1; --i) {
        sum = sum + previous - rising[i].position;
        points.push_back({sum, rising[i].value});
        previous = rising[i].position;
    }
    points.push_back({1.0, 0.0});
    return 0;
}

}  // namespace streakfall
