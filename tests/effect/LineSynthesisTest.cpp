// From parameters and time to lines, without a host.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <random>

#include "effect/LineSynthesis.h"
#include "effect/StrokeSetup.h"
#include "params/ParamRows.h"
#include "support/GoldenFrame.h"

namespace {

using namespace streakfall;

std::vector<LineRecord> linesOf(const EffectParams& raw, const FrameInfo& info) {
    std::vector<LineRecord> lines;
    generateLines(convertParams(raw, info), info, lines);
    return lines;
}

std::string nameOf(const ::testing::TestParamInfo<std::size_t>& info) {
    std::string name = golden::frames()[info.param].name;
    std::ranges::replace(name, '-', '_');
    return name;
}

class GoldenLinesTest : public ::testing::TestWithParam<std::size_t> {};

// A sum grouped otherwise moves the last bits; anything beyond that is another line.
TEST_P(GoldenLinesTest, AreTheExpectedOnes) {
    const golden::Frame& frame = golden::frames()[GetParam()];
    const std::vector<LineRecord> lines = linesOf(frame.params, frame.info);
    ASSERT_EQ(lines.size(), frame.lines.size());
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const LineRecord& actual = lines[i];
        const LineRecord& expected = frame.lines[i];
        SCOPED_TRACE("line " + std::to_string(i));
        ASSERT_NEAR(actual.x0, expected.x0, 1e-9);
        ASSERT_NEAR(actual.y0, expected.y0, 1e-9);
        ASSERT_NEAR(actual.x1, expected.x1, 1e-9);
        ASSERT_NEAR(actual.y1, expected.y1, 1e-9);
        ASSERT_NEAR(actual.thickness, expected.thickness, 1e-9);
        ASSERT_NEAR(actual.axialPosition, expected.axialPosition, 1e-9);
        ASSERT_EQ(actual.seed, expected.seed);
    }
}

INSTANTIATE_TEST_SUITE_P(All, GoldenLinesTest,
                         ::testing::Range<std::size_t>(0, golden::frames().size()), nameOf);

TEST(FrameTimeTest, FrameIndexIsDefinedForEveryTime) {
    const auto index = [](std::int32_t time, std::int32_t step) {
        return frameIndexOf({.currentTime = time, .timeStep = step});
    };
    EXPECT_EQ(index(10, 3), 3);
    EXPECT_EQ(index(-10, 3), -3) << "cut toward zero";
    EXPECT_EQ(index(10, -3), -3);
    EXPECT_EQ(index(10, 0), 0);
    EXPECT_EQ(index(INT32_MIN, -1), INT32_MAX);
}

TEST(FrameTimeTest, LengthsFollowTheStrongerReduction) {
    EXPECT_EQ(renderScaleOf({.downsampleX = {1, 2}, .downsampleY = {1, 4}}), 0.25);
    EXPECT_EQ(renderScaleOf({.downsampleX = {1, 8}, .downsampleY = {1, 4}}), 0.125);
}

// Halves are exact, so whatever the values, a frame of half the size has the lines of the whole one
// at half their coordinates, to the bit: any length that is not scaled shows.
TEST(HalfSizeTest, HasTheLinesOfTheWholeFrameAtHalfTheirSize) {
    std::size_t lines = 0;
    for (std::uint32_t seed = 0; seed < 60; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        EffectParams whole = golden::defaultParams();
        for (const ParamRow& row : kParamRows) {
            if (row.type != PF_Param_FLOAT_SLIDER) continue;
            double value =
                std::uniform_real_distribution<double>(row.slider.min, row.slider.max)(random);
            std::memcpy(reinterpret_cast<std::byte*>(&whole) + row.place.offset, &value,
                        sizeof value);
        }
        whole.repeat = seed % 2;
        whole.fixBandForm = seed % 3 == 0;
        whole.enableTaper = seed % 5 < 2;
        whole.randomRepeatNum = 3;
        whole.startPoint = {200 << 16, 100 << 16};
        whole.endPoint = {360 << 16, 300 << 16};
        EffectParams half = whole;
        half.startPoint = {100 << 16, 50 << 16};
        half.endPoint = {180 << 16, 150 << 16};
        // Frames of one number of prototypes, whose diagonal is below 900.
        const FrameInfo full{.width = 640, .height = 360, .currentTime = 3};
        const FrameInfo small{.width = 320,
                              .height = 180,
                              .downsampleX = {1, 2},
                              .downsampleY = {1, 2},
                              .currentTime = 3};

        const auto expected = linesOf(whole, full), actual = linesOf(half, small);
        ASSERT_EQ(actual.size(), expected.size());
        for (std::size_t i = 0; i < expected.size(); ++i) {
            ASSERT_EQ(actual[i].x0 * 2, expected[i].x0) << i;
            ASSERT_EQ(actual[i].y1 * 2, expected[i].y1) << i;
            ASSERT_EQ(actual[i].thickness * 2, expected[i].thickness) << i;
            ASSERT_EQ(actual[i].axialPosition * 2, expected[i].axialPosition) << i;
        }
        lines += expected.size();

        StrokeForm stroke, halfStroke;
        setUpStroke(stroke, convertParams(whole, full).values);
        setUpStroke(halfStroke, convertParams(half, small).values);
        EXPECT_EQ(halfStroke.inLength * 2, stroke.inLength);
        EXPECT_EQ(halfStroke.outLength * 2, stroke.outLength);
        EXPECT_EQ(halfStroke.wave.amount * 2, stroke.wave.amount);
        EXPECT_EQ(halfStroke.wave.phase, stroke.wave.phase);
        if (half.waveLength >= 2) {
            EXPECT_EQ(halfStroke.wave.wavelength * 2, stroke.wave.wavelength);
        }
    }
    EXPECT_GT(lines, 5000u);
}

TEST(FrameInfoTest, FramesThatNoHostShouldGiveComeBack) {
    const golden::Frame& frame = golden::frame("11");
    for (const std::int32_t side : {0, -5, INT32_MIN}) {
        EXPECT_TRUE(linesOf(frame.params, {.width = side, .height = 100}).empty());
        EXPECT_TRUE(linesOf(frame.params, {.width = 100, .height = side}).empty());
    }
    for (const PF_RationalScale scale : {PF_RationalScale{1, 0}, {0, 0}, {0, 1}, {-1, 2}}) {
        FrameInfo info = frame.info;
        info.downsampleX = info.downsampleY = scale;
        EXPECT_LT(linesOf(frame.params, info).size(), 1000000u);
    }
}

// Frames of one interval are alike, the first interval does not come back, and the others do with
// the length of the array as their period.
TEST(FrameTimeTest, RandomIntervalAndArray) {
    const golden::Frame& frame = golden::frame("03");
    const auto firstLineAt = [&](std::int32_t time, std::int32_t interval, std::int32_t array) {
        EffectParams params = frame.params;
        params.randomInterval = interval;
        params.randomArray = array;
        FrameInfo info = frame.info;
        info.currentTime = time;
        return linesOf(params, info).at(0).x0;
    };
    const double frozen = firstLineAt(0, 0, 2);
    EXPECT_EQ(firstLineAt(1000, 0, 2), frozen);
    EXPECT_EQ(firstLineAt(9, 10, 2), frozen);
    EXPECT_EQ(firstLineAt(-25, 10, 2), frozen);
    EXPECT_EQ(firstLineAt(35, 10, 1), frozen);
    const double second = firstLineAt(10, 10, 2);
    const double third = firstLineAt(20, 10, 2);
    EXPECT_NE(second, frozen);
    EXPECT_NE(third, frozen);
    EXPECT_NE(third, second);
    EXPECT_EQ(firstLineAt(30, 10, 2), second);
    EXPECT_EQ(firstLineAt(512 + 1, 1, 0), firstLineAt(1, 1, 0));
    EXPECT_EQ(firstLineAt(512 + 1, 1, 2000), firstLineAt(1, 1, 2000));
    EXPECT_NE(firstLineAt(511 + 1, 1, 0), firstLineAt(1, 1, 0));
}

}  // namespace
