// Large frames with short rows, where there are the most rows: every line of the plain generator,
// and no other, up to the far end of the frame.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <random>
#include <string>

#include "PlainField.h"
#include "lines/RowWalk.h"

namespace streakfall {
namespace {

using Lines = std::vector<LineRecord>;

constexpr double kDefaultThickness = 5, kDefaultWaveAmount = 15;

// All else at its default, as a render at full size sets a field up.
LineField defaultField(int width, int height) {
    LineField f(0, 0, width, height, kDefaultWaveAmount + kDefaultThickness, 1);
    f.startX = 0.3 * width;
    f.endX = 0.7 * width;
    f.startY = f.endY = 0.5 * height;
    f.thickness = kDefaultThickness;
    f.length = 500;
    f.density = 40;
    f.attraction = 0.5;
    f.baseLength = 200;
    f.repeat = true;
    return f;
}

Lines generated(LineField field) {
    Lines lines;
    field.generate(lines);
    return lines;
}

// By value, and by bytes where doubles differ, so that a wrong bit is told with its line.
void expectSameLines(const Lines& lines, const Lines& plain) {
    ASSERT_EQ(lines.size(), plain.size());
    const auto same = [](const LineRecord& a, const LineRecord& b) {
        const auto bits = [](double x, double y) { return std::memcmp(&x, &y, sizeof x) == 0; };
        return bits(a.x0, b.x0) && bits(a.y0, b.y0) && bits(a.x1, b.x1) && bits(a.y1, b.y1) &&
               bits(a.thickness, b.thickness) && bits(a.axialPosition, b.axialPosition) &&
               a.seed == b.seed;
    };
    const auto [ours, theirs] = std::mismatch(lines.begin(), lines.end(), plain.begin(), same);
    EXPECT_EQ(ours, lines.end()) << "line " << ours - lines.begin();
}

struct LargeFrame {
    int width, height;
    double length, interval;
    bool axisFromZero;
    double taperPercent, baseLength, density;
    std::size_t lines;
    double largestX1;
};

class LongLargeField : public testing::TestWithParam<LargeFrame> {};

TEST_P(LongLargeField, ReachesTheFarEnd) {
    const LargeFrame& row = GetParam();
    LineField field = defaultField(row.width, row.height);
    field.length = row.length;
    field.repeatInterval = row.interval;
    if (row.axisFromZero) {
        field.startX = 0.0;
        field.endX = 0.5 * row.width;
    }
    field.taperEnabled = row.taperPercent != 0.0;
    field.taper = row.taperPercent / 100.0;
    field.baseLength = row.baseLength;
    field.density = row.density;

    const Lines lines = generated(field);
    EXPECT_EQ(lines.size(), row.lines);
    double largest = 0.0;
    for (const LineRecord& line : lines) largest = std::max(largest, line.x1);
    EXPECT_NEAR(largest, row.largestX1, 0.05);
    expectSameLines(lines, plain::lines(field));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, LongLargeField,
    testing::Values(LargeFrame{3840, 2160, 5, 2, false, 0, 200, 40, 49395, 3859.0},
                    LargeFrame{7680, 4320, 20, 8, false, 0, 200, 40, 48300, 7700.0},
                    LargeFrame{7680, 4320, 20, 5, false, 0, 200, 40, 54075, 7699.0},
                    LargeFrame{1920, 1080, 1, 0.8, false, 0, 200, 40, 49005, 1939.6},
                    LargeFrame{1920, 1080, 2, 0, true, 0, 200, 40, 44190, 1942.0},
                    LargeFrame{1920, 1080, 2, 1, true, 50, 200, 40, 12770, 1941.8},
                    LargeFrame{1920, 1080, 3, 2, true, 1, 2000, 1000, 442469, 1943.0},
                    LargeFrame{3840, 2160, 10, 10, true, 1, 2000, 1000, 429183, 3870.0}),
    [](const auto& row) { return "Row" + std::to_string(row.index + 1); });

class Dice {
  public:
    explicit Dice(std::uint32_t seed) : random(seed) {}
    double between(double low, double high) {
        return std::uniform_real_distribution<double>(low, high)(random);
    }
    bool oneIn(unsigned n) { return random() % n == 0; }

  private:
    std::mt19937 random;
};

// Frames of any form, rows as short as the plain generator still bears, all the randomness.
LineField shortRows(Dice& dice) {
    const bool thin = dice.oneIn(3);
    const int width = static_cast<int>(dice.between(1, thin ? 20000 : 8000));
    const int height = static_cast<int>(dice.between(1, thin ? 30 : 5000));
    LineField f(0, 0, width, height, dice.between(0, dice.oneIn(2) ? 2 : 200),
                dice.oneIn(3) ? 0.5 : 1.0);
    f.startX = dice.between(-0.5, 1.5) * width;
    f.startY = dice.between(-0.5, 1.5) * height;
    f.endX = dice.oneIn(4) ? f.startX : dice.between(-0.5, 1.5) * width;
    f.endY = dice.oneIn(4) ? f.startY : dice.between(-0.5, 1.5) * height;
    f.thickness = dice.between(0.01, 20);
    f.thicknessRandom = dice.between(0, 5);
    f.length = (dice.oneIn(2) ? 1 : -1) * dice.between(1, 60);
    f.lengthRandom = dice.between(0, 1);
    f.offset = dice.between(-10000, 10000);
    f.offsetRandom = dice.oneIn(2) ? 0 : dice.between(0, 2);
    f.density = dice.oneIn(2) ? dice.between(0.1, 20) : dice.between(20, 200);
    f.densityRandom = dice.between(0, 4);
    f.repeat = true;
    f.repeatInterval = dice.between(30, 200);
    f.repeatRandomCount = dice.oneIn(3) ? 0 : static_cast<int>(dice.between(1, 100));
    f.randomSeed = static_cast<std::int32_t>(dice.between(0, 10000));
    if (dice.oneIn(3)) f.groupLines = dice.between(0, 1);
    f.linesRandom = f.groupLines * 0.5;
    f.attraction = dice.between(0, 1);
    f.intervalRandom = dice.between(0, 50);
    f.groupOffsetRandom = dice.between(0, 2);
    f.archRate = dice.between(0.01, 2);
    f.baseLength = dice.between(0, 2000);
    f.taperEnabled = dice.oneIn(2);
    if (f.taperEnabled) f.taper = dice.between(-1, 1) * (dice.oneIn(3) ? 0.01 : 1.0);
    f.bandMode = dice.oneIn(2) ? LineField::kArch : LineField::kFixedBand;
    return f;
}

TEST(LongLargeFields, RandomFramesHaveTheLinesOfThePlainGenerator) {
    std::size_t lines = 0;
    for (std::uint32_t seed = 0; seed < 100; ++seed) {
        SCOPED_TRACE(seed);
        Dice dice(seed);
        const LineField field = shortRows(dice);
        const Lines plain = plain::lines(field);
        expectSameLines(generated(field), plain);
        lines += plain.size();
    }
    EXPECT_GT(lines, 300000u);
}

// In a narrow frame that the axis crosses far from the start point all rows but some are passed
// over, and there are far more than 32-bit numbers can count.
TEST(LongLargeFields, RowsOfAThousandthOfAPixelReachTheFarEnd) {
    LineField field = defaultField(30000, 2);
    field.startX = -3000;
    field.endX = 0;
    field.density = 0.1;
    field.length = 1e-5;
    field.repeatInterval = 0.001;
    const Lines fine = generated(field);
    EXPECT_NEAR(static_cast<double>(fine.size()), 30020 / (0.001 + 1e-5), 2);
    EXPECT_NEAR(fine.back().x1, 30000, 0.01);

    LineField finest = defaultField(3, 3);
    finest.startX = 30000;
    finest.endX = 20000;
    finest.startY = finest.endY = 1.0;
    finest.density = 0.1;
    finest.length = 2e-6;
    finest.repeatInterval = 0;
    const Lines last = generated(finest);
    EXPECT_NEAR(static_cast<double>(last.size()), 23 / 2e-6, 23 / 2e-6 / 1e3);
    EXPECT_NEAR(last.front().x0, 23.0, 0.001);
    EXPECT_NEAR(last.back().x0, 0.0, 0.02);
}

// Far too many lines: as many as the bound, soon, from the near end.
TEST(LongLargeFields, StopAtTheBound) {
    LineField field = defaultField(1920, 1080);
    field.length = 1e-4;
    EXPECT_EQ(generated(field).size(), LineField::kMaxLines);
}

TEST(RowWalkTest, PlacesThatDoNotRiseAreTheLast) {
    for (const double x : {-1e292, -HUGE_VAL}) {
        RowWalk row(x, 3.0, std::int64_t{1} << 53);
        row.skipTo(0.0);
        EXPECT_FALSE(row.more()) << x;
    }
}

// The places that adding gives one by one, also where the pitch ends on half a unit of the sums.
TEST(RowWalkTest, SkipsToThePlaceThatAddingGives) {
    Dice dice(5);
    for (int n = 0; n < 2000; ++n) {
        double pitch = std::exp2(dice.between(-12, 6));
        if (dice.oneIn(2)) pitch = std::ldexp(std::round(std::ldexp(pitch, 20)) + 0.5, -20);
        double x = dice.between(-3000, 3000);
        if (dice.oneIn(2)) x = std::ldexp(std::round(x), 20) + std::ldexp(1.0, 33);
        const double target = x + dice.between(-1, 5000) * pitch;
        const std::int64_t count = static_cast<std::int64_t>(dice.between(1, 9000));
        RowWalk jump(x, pitch, count), step(x, pitch, count);
        jump.skipTo(target);
        while (step.more() && step.x < target) step.next();
        ASSERT_EQ(jump.row, step.row) << n;
        if (jump.more()) {
            ASSERT_EQ(jump.x, step.x) << n;
        }
    }
}

}  // namespace
}  // namespace streakfall
