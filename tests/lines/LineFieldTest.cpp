#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "lines/LineField.h"

namespace streakfall {
namespace {

using Lines = std::vector<LineRecord>;

LineField referenceField() {
    LineField f(0, 0, 640, 360, 20, 1);
    f.startX = 192;
    f.startY = 180;
    f.endX = 448;
    f.endY = 300;
    f.thickness = 5;
    f.thicknessRandom = 0.5;
    f.offsetRandom = 0.2;
    f.length = 300;
    f.lengthRandom = 0.4;
    f.density = 40;
    f.densityRandom = 4.0 * 0.25;
    f.randomSeed = 7;
    f.attraction = 0.5;
    return f;
}

LineField fanField() {
    LineField f = referenceField();
    f.taperEnabled = true;
    f.taper = 0.4;
    f.baseLength = 200;
    f.repeat = true;
    f.repeatInterval = 100;
    f.repeatRandomCount = 3;
    f.offset = 50;
    f.autoOffsetTotal = 12 * 10.0;
    return f;
}

Lines generated(LineField field) {
    Lines lines;
    field.generate(lines);
    return lines;
}

void expectLine(const LineRecord& line, const LineRecord& expected) {
    EXPECT_NEAR(line.x0, expected.x0, 1e-5);
    EXPECT_NEAR(line.y0, expected.y0, 1e-5);
    EXPECT_NEAR(line.x1, expected.x1, 1e-5);
    EXPECT_NEAR(line.y1, expected.y1, 1e-5);
    EXPECT_NEAR(line.thickness, expected.thickness, 1e-5);
    EXPECT_NEAR(line.axialPosition, expected.axialPosition, 1e-5);
    EXPECT_EQ(line.seed, expected.seed);
}

void expectField(const LineField& field, std::size_t count, const LineRecord& first,
                 const LineRecord& last) {
    const Lines lines = generated(field);
    ASSERT_EQ(lines.size(), count);
    expectLine(lines.front(), first);
    expectLine(lines.back(), last);
}

TEST(LineField, ReferenceFields) {
    expectField(referenceField(), 22,
                {235.39310, 193.38854, 496.87240, 315.95696, 2.90871, 44.97322, 554},
                {394.26247, -123.86698, 637.57373, -9.81483, 4.43889, 54.16892, 565});

    LineField grouped = referenceField();
    grouped.groupLines = 0.125;
    grouped.linesRandom = 0.05;
    grouped.attraction = 0.6;
    grouped.intervalRandom = 1.0;
    grouped.groupOffsetRandom = 0.3;
    expectField(grouped, 32, {220.91340, 137.64236, 435.62136, 238.28671, 6.86828, 8.20188, 554},
                {272.29293, -113.73330, 500.14196, -6.92906, 5.64176, -51.96841, 566});

    LineField fan = fanField();
    expectField(fan, 63, {-79.63768, 52.66984, 2.17746, 34.70085, 2.58206, -300.0, 599},
                {399.99665, 12.60096, 605.96537, -4.60577, 4.90021, 181.30510, 562});

    fan.bandMode = LineField::kFixedBand;
    expectField(fan, 64, {-79.63768, 52.66984, -18.09522, 37.23322, 4.16209, -300.0, 598},
                {473.58561, 6.45330, 711.15553, -13.39341, 4.90021, 255.15041, 562});
}

TEST(LineField, DegenerateFieldsHaveNoLines) {
    LineField f = referenceField();
    f.length = 5e-7;
    EXPECT_TRUE(generated(f).empty());
    f = referenceField();
    f.offset = 1e5;  // beyond the reach
    EXPECT_TRUE(generated(f).empty());
    f.repeat = true;  // wraps, and lines remain
    EXPECT_FALSE(generated(f).empty());
    f = referenceField();
    f.densityRandom = 0;
    f.density = -3;  // as 0.1: a step of 10000 pixels
    EXPECT_EQ(generated(f).size(), 1u);
}

// A slot that stores no line still counts, so its neighbours keep their seeds.
TEST(LineField, SeedsDoNotDependOnNeighbours) {
    LineField thin = referenceField();
    thin.thicknessRandom = 3.0;
    const Lines all = generated(referenceField()), some = generated(thin);
    ASSERT_LT(some.size(), all.size());
    std::size_t found = 0;
    for (const LineRecord& line : some) {
        for (const LineRecord& other : all) {
            found += line.seed == other.seed && line.x0 == other.x0 && line.y1 == other.y1;
        }
    }
    EXPECT_EQ(found, some.size());
}

TEST(LineField, FoldIsContinuousAcrossEveryMultiple) {
    for (int k = -4; k <= 4; ++k) {
        const double at = k * 3.0;
        EXPECT_NEAR(reflectFold(at - 1e-9, 3.0), reflectFold(at + 1e-9, 3.0), 1e-8) << k;
    }
    EXPECT_EQ(reflectFold(-1.0, 3.0), 1.0);
    EXPECT_EQ(reflectFold(4.0, 3.0), 2.0);
}

// The clip test against dense sampling of the segment.
TEST(LineField, ClipTestAgreesWithSampling) {
    const Rect rect{-2, -1, 3, 4};
    std::mt19937 random(20);
    std::uniform_real_distribution<double> place(-8, 8);
    for (int n = 0; n < 5000; ++n) {
        const double px = place(random), py = place(random);
        const double qx = place(random), qy = place(random);
        bool inside = false;
        for (int i = 0; i <= 4000; ++i) {
            const double s = i / 4000.0;
            const double x = px + s * (qx - px), y = py + s * (qy - py);
            inside |= x >= -2 && x <= 3 && y >= -1 && y <= 4;
        }
        if (inside) {
            EXPECT_TRUE(segmentTouchesRect(px, py, qx, qy, rect)) << n;
        }
        const Rect wider{-2.01, -1.01, 3.01, 4.01};
        if (segmentTouchesRect(px, py, qx, qy, rect)) {
            EXPECT_TRUE(inside || segmentTouchesRect(px, py, qx, qy, wider)) << n;
        }
    }
    EXPECT_TRUE(segmentTouchesRect(-9, 4, 9, 4, rect));  // along an edge
    EXPECT_FALSE(segmentTouchesRect(-9, 5, 9, 5, rect));
}

LineField randomField(std::mt19937& random, double margin) {
    const auto between = [&](double low, double high) {
        return std::uniform_real_distribution<double>(low, high)(random);
    };
    const auto oneIn = [&](int n) { return random() % static_cast<unsigned>(n) == 0; };
    LineField f(0, 0, 640, 360, margin, oneIn(3) ? 0.5 : 1.0);
    f.startX = between(-300, 900);
    f.startY = between(-300, 700);
    f.endX = oneIn(4) ? f.startX : between(-300, 900);
    f.endY = oneIn(4) ? f.startY : between(-300, 700);
    f.thickness = 5;
    f.length = between(-800, 800);
    f.lengthRandom = between(0, 1);
    f.offset = between(-500, 500);
    f.offsetRandom = oneIn(2) ? 0 : between(0, 2);
    f.density = oneIn(2) ? between(0.1, 20) : between(20, 1000);
    f.densityRandom = between(0, 4);
    f.repeat = oneIn(2);
    f.repeatInterval = between(0, 300);
    f.repeatRandomCount = 2;
    f.randomSeed = static_cast<std::int32_t>(random() % 1000);
    if (oneIn(3)) f.groupLines = between(0, 1);
    f.linesRandom = f.groupLines * 0.5;
    f.attraction = between(0, 1);
    f.intervalRandom = between(0, 50);
    if (oneIn(3)) {
        f.taperEnabled = true;
        f.taper = between(-1, 1);
        f.baseLength = between(1, 1000);
        f.bandMode = oneIn(2) ? LineField::kArch : LineField::kFixedBand;
    }
    return f;
}

// Slots that cannot touch the frame are passed over before any arithmetic. With a margin without
// end nothing is passed over; of its lines those that touch must be left, to the bit.
TEST(LineField, PassesOverNothingThatTouchesTheFrame) {
    for (std::uint32_t seed = 0; seed < 300; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 near(seed), far(seed);
        const LineField field = randomField(near, 20.0);
        Lines all = generated(randomField(far, 1e7));
        std::erase_if(all, [&](const LineRecord& line) {
            return !segmentTouchesRect(line.x0, line.y0, line.x1, line.y1, field.clipRect);
        });
        const Lines lines = generated(field);
        ASSERT_EQ(lines.size(), all.size());
        for (std::size_t i = 0; i < lines.size(); ++i) {
            ASSERT_EQ(lines[i].x0, all[i].x0);
            ASSERT_EQ(lines[i].y0, all[i].y0);
            ASSERT_EQ(lines[i].x1, all[i].x1);
            ASSERT_EQ(lines[i].y1, all[i].y1);
            ASSERT_EQ(lines[i].thickness, all[i].thickness);
            ASSERT_EQ(lines[i].axialPosition, all[i].axialPosition);
            ASSERT_EQ(lines[i].seed, all[i].seed);
        }
    }
}

// Values that only an expression or a damaged file can give: a result, and soon.
TEST(LineField, ComesBackFromAnyValue) {
    const double odd[] = {0.0,
                          -1e300,
                          1e300,
                          std::numeric_limits<double>::infinity(),
                          1e-30,
                          -0.5,
                          std::numeric_limits<double>::quiet_NaN()};
    double LineField::*const values[] = {
        &LineField::startX,         &LineField::length,       &LineField::lengthRandom,
        &LineField::offset,         &LineField::offsetRandom, &LineField::thickness,
        &LineField::density,        &LineField::groupLines,   &LineField::linesRandom,
        &LineField::intervalRandom, &LineField::taper,        &LineField::baseLength,
        &LineField::archRate,       &LineField::scale,        &LineField::repeatInterval};
    for (const auto value : values) {
        for (const double v : odd) {
            LineField f = fanField();
            f.groupLines = 0.1;
            f.*value = v;
            generated(f);
            f = referenceField();
            f.repeat = true;
            f.repeatRandomCount = v > 0 ? INT32_MAX : INT32_MIN;
            f.*value = v;
            generated(f);
        }
    }
    LineField endless = referenceField();
    endless.repeat = true;
    endless.length = 1e-5;
    generated(endless);
}

}  // namespace
}  // namespace streakfall
