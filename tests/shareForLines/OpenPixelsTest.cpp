// The pixels that hollow dabs may leave open: asked for eight at a time, along rows and down.
#include <gtest/gtest.h>

#include <cmath>

#include "shareForLines/fast/OpenPixels.h"

namespace streakfall {
namespace {

constexpr std::int32_t kWidth = 260, kHeight = 460;

// A steep line that leaves few pixels open, some of them in no more than one row.
struct SteepLine {
    double thickness, angle, length, x, y;
};

OpenPixels openPixelsOf(const SteepLine& its, std::int32_t down) {
    StrokeForm stroke;
    stroke.thickness = its.thickness;
    stroke.inOutEnabled = true;
    stroke.startThicknessRatio = stroke.endThicknessRatio = 0.0;
    stroke.inLength = stroke.outLength = 0.8 * its.thickness;
    LineRecord line{};
    line.x0 = its.x;
    line.y0 = its.y + down;
    line.x1 = its.x + its.length * std::cos(its.angle);
    line.y1 = its.y + down + its.length * std::sin(its.angle);
    line.thickness = its.thickness;
    OpenPixels open;
    open.find(stroke, line, WhatShows(), kWidth, kHeight);
    return open;
}

// Wherever the open rows lie among the eights.
TEST(OpenPixels, SayTheSameDownwardAsAlongRows) {
    int asked = 0;
    for (const SteepLine& line : {SteepLine{130.86, -1.841, 258.5, 164.5, 143.8},
                                  SteepLine{123.08, -1.673, 244.5, 142.4, 203.5},
                                  SteepLine{134.58, -1.282, 257.9, 93.3, 213.4}}) {
        for (std::int32_t shift = 100; shift < 108; ++shift) {
            const OpenPixels open = openPixelsOf(line, shift);
            for (std::int32_t y = -8; y < kHeight + 8; ++y) {
                for (std::int32_t x = -1; x <= kWidth; ++x) {
                    unsigned bits = 0;
                    for (std::int32_t i = 0; i < 8; ++i) bits |= (open.across(x, y + i) & 1) << i;
                    ASSERT_EQ(open.down(x, y), bits) << "at " << x << ", " << y;
                    asked += bits != 0;
                }
            }
        }
    }
    EXPECT_GT(asked, 100);
}

}  // namespace
}  // namespace streakfall
