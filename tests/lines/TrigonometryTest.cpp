#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>
#include <numbers>

#include "lines/Trigonometry.h"

namespace {

using namespace streakfall;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr int kSweep = 100000;

std::uint64_t hashed(std::uint64_t hash, double value) {
    const auto bits = std::bit_cast<std::uint64_t>(value);
    for (int shift = 0; shift < 64; shift += 8) {
        hash = (hash ^ ((bits >> shift) & 0xFF)) * 0x100000001B3u;
    }
    return hash;
}

// Angles of a turn and ratios of all steepnesses, by an irrational stride.
double sweepAngle(int i) { return std::remainder(i * std::numbers::phi, 2 * std::numbers::pi); }
double sweepSide(int i) { return std::remainder(i * 1234.5678, 2e5); }

bool isNextTo(double a, double b) { return a == b || std::nextafter(a, b) == b; }

TEST(TrigonometryTest, LiesBesideTheLibrarysResults) {
    for (int i = 0; i < kSweep; ++i) {
        const double angle = sweepAngle(i), x = sweepSide(i), y = sweepSide(3 * i + 1);
        const SineCosine turn = sineCosine(angle);
        ASSERT_TRUE(isNextTo(turn.sine, std::sin(angle))) << angle;
        ASSERT_TRUE(isNextTo(turn.cosine, std::cos(angle))) << angle;
        ASSERT_TRUE(isNextTo(vectorAngle(y, x), std::atan2(y, x))) << y << ", " << x;
    }
}

// The same number on every system, compiler and processor is what these functions are for.
TEST(TrigonometryTest, GivesTheSameBitsEverywhere) {
    std::uint64_t hash = 0xCBF29CE484222325u;
    for (int i = 0; i < kSweep; ++i) {
        const SineCosine turn = sineCosine(sweepAngle(i));
        hash = hashed(hashed(hash, turn.sine), turn.cosine);
        hash = hashed(hash, vectorAngle(sweepSide(3 * i + 1), sweepSide(i)));
    }
    EXPECT_EQ(hash, 0x6E7CDA37FE8E4F70u);
}

// Where a result nearly vanishes, or is one of a few plain numbers.
TEST(TrigonometryTest, IsExactAtTheTurningPoints) {
    EXPECT_EQ(sineCosine(std::numbers::pi).sine, 0x1.1a62633145c07p-53);
    EXPECT_EQ(sineCosine(std::numbers::pi).cosine, -1.0);
    EXPECT_EQ(sineCosine(std::numbers::pi / 2).sine, 1.0);
    EXPECT_EQ(sineCosine(std::numbers::pi / 2).cosine, 0x1.1a62633145c07p-54);
    EXPECT_EQ(sineCosine(5e-324).sine, 5e-324);
    EXPECT_TRUE(std::signbit(sineCosine(-0.0).sine));
    EXPECT_EQ(sineCosine(0.0).cosine, 1.0);
}

TEST(TrigonometryTest, AnglesOfTheAxesAndOfBadVectors) {
    EXPECT_EQ(vectorAngle(0.0, 3.0), 0.0);
    EXPECT_EQ(vectorAngle(0.0, 0.0), 0.0);
    EXPECT_EQ(vectorAngle(0.0, -3.0), std::numbers::pi);
    EXPECT_EQ(vectorAngle(-0.0, -3.0), -std::numbers::pi);
    EXPECT_EQ(vectorAngle(2.0, 0.0), std::numbers::pi / 2);
    EXPECT_EQ(vectorAngle(-2.0, 2.0), -std::numbers::pi / 4);
    EXPECT_EQ(vectorAngle(kInfinity, -kInfinity), 3 * std::numbers::pi / 4);
    EXPECT_EQ(vectorAngle(1e308, kInfinity), 0.0);
    EXPECT_EQ(vectorAngle(1e308, 1e308), std::numbers::pi / 4);
    EXPECT_EQ(vectorAngle(5e-324, 5e-324), std::numbers::pi / 4);
    EXPECT_TRUE(std::isnan(vectorAngle(kNaN, 1.0)));
    EXPECT_TRUE(std::isnan(vectorAngle(1.0, kNaN)));
    for (const double angle : {kNaN, kInfinity, 1e9}) {
        EXPECT_TRUE(std::isnan(sineCosine(angle).sine)) << angle;
        EXPECT_TRUE(std::isnan(sineCosine(angle).cosine)) << angle;
    }
}

}  // namespace
