#include <gtest/gtest.h>

#include "shareForLines/path/ShapeCurve.h"
#include "shareForLines/path/Stroke.h"
#include "shareForLines/path/StrokeShape.h"

namespace streakfall {
namespace {

double valueAt(StrokeShape& shape, double u) {
    shape.cursor = 0;
    return shapeValue(shape, u);
}

TEST(StrokeShape, RampCurves) {
    StrokeForm stroke;
    ASSERT_EQ(stroke.inShape.points.size(), 101u);
    ASSERT_EQ(stroke.outShape.points.size(), 101u);
    const std::pair<double, double> expected[] = {
        {0.1, 0.13271}, {0.25, 0.32926}, {0.5, 0.62979}, {0.75, 0.87504}, {0.9, 0.97397}};
    for (const auto& [u, value] : expected) {
        EXPECT_NEAR(valueAt(stroke.inShape, u), value, 5e-6) << u;
        EXPECT_NEAR(valueAt(stroke.outShape, 1.0 - u), value, 5e-6) << u;
    }
    EXPECT_EQ(valueAt(stroke.inShape, 0.0), 0.0);
    EXPECT_EQ(valueAt(stroke.inShape, 1.0), 1.0);
    EXPECT_EQ(valueAt(stroke.inShape, 1.5), 1.0);
    EXPECT_EQ(valueAt(stroke.outShape, -0.5), 1.0);
    EXPECT_EQ(stroke.outShape.points.back().value, 0.0);
    for (std::size_t i = 1; i < 101; ++i) {
        EXPECT_GE(stroke.inShape.points[i].position, stroke.inShape.points[i - 1].position);
        EXPECT_LE(stroke.inShape.points[i].position, 1.0);
    }
}

TEST(StrokeShape, WalkKeepsEqualArcSteps) {
    ShapeCurve curve;
    curve.setCurve(0, 0, 1, 0, 2, 0, 3, 0);  // straight, at even speed
    EXPECT_EQ(curve.beginWalk(0.0, 1.0, 0.0, true), 516);
    ASSERT_EQ(curve.beginWalk(0.25, 0.75, 0.25, false), 0);
    ASSERT_TRUE(curve.nextPoint());
    EXPECT_NEAR(curve.pointX, 0.75, 1e-12);
    ASSERT_TRUE(curve.nextPoint());
    EXPECT_NEAR(curve.pointX, 1.5, 1e-12);
    EXPECT_NEAR(curve.arcFraction, 0.5, 1e-12);
    EXPECT_FALSE(curve.nextPoint());
}

// What the quick painting of ramps takes for granted.
TEST(StrokeShape, IsConcaveButForABow) {
    const StrokeForm stroke;
    const std::vector<ShapePoint>& p = stroke.inShape.points;
    double bow = 0.0;
    for (std::size_t i = 0; i < p.size(); ++i) {
        for (std::size_t k = i + 2; k < p.size(); ++k) {
            const double slope = (p[k].value - p[i].value) / (p[k].position - p[i].position);
            for (std::size_t j = i + 1; j < k; ++j) {
                const double chord = p[i].value + slope * (p[j].position - p[i].position);
                bow = std::max(bow, chord - p[j].value);
            }
        }
    }
    EXPECT_GT(bow, 0.0);
    EXPECT_LT(bow, kRampBow);
}

}  // namespace
}  // namespace streakfall
