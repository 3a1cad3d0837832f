#include <gtest/gtest.h>

#include "PaintBox.h"
#include "shareForLines/trace/LineTracer.h"

namespace streakfall {
namespace {

template <class Depth>
void drawLine(PaintBox<Depth>& box, double x0, double y0, double x1, double y1, double thickness) {
    Stroke<Depth> stroke;
    stroke.pen = penOf<Depth>(0, 0, 0);
    stroke.thickness = thickness;
    traceLine(stroke, box.canvas, {x0, y0, x1, y1, thickness, 0, 1});
}

using Row = std::vector<int>;

TEST(LineTracer, PlainLineAlphas) {
    PaintBox<Depth8> box(32, 24);
    drawLine(box, 10, 10, 20, 10, 4);
    Row middle{117, 248}, beside{63, 221}, rim{0, 63};
    middle.insert(middle.end(), 11, 255);
    beside.insert(beside.end(), 11, 248);
    rim.insert(rim.end(), 11, 117);
    for (const int end : {248, 117}) middle.push_back(end);
    for (const int end : {221, 63}) beside.push_back(end);
    for (const int end : {63, 0}) rim.push_back(end);
    EXPECT_EQ(box.alphas(10, 8, 22), middle);
    EXPECT_EQ(box.alphas(9, 8, 22), beside);
    EXPECT_EQ(box.alphas(11, 8, 22), beside);
    EXPECT_EQ(box.alphas(8, 8, 22), rim);
    EXPECT_EQ(box.alphas(12, 8, 22), rim);
    EXPECT_EQ(box.painted(), 15u * 3 + 13u * 2);
}

// A line of no length is one disc.
TEST(LineTracer, DiscAlphas) {
    PaintBox<Depth8> small(24, 24);
    drawLine(small, 10, 10, 10, 10, 4);
    EXPECT_EQ(small.alphas(10, 8, 12), (Row{117, 248, 255, 248, 117}));
    EXPECT_EQ(small.alphas(9, 8, 12), (Row{63, 221, 248, 221, 63}));
    EXPECT_EQ(small.alphas(8, 8, 12), (Row{0, 63, 117, 63, 0}));
    EXPECT_EQ(small.painted(), 21u);

    PaintBox<Depth8> large(48, 48);
    drawLine(large, 20, 20, 20, 20, 10);
    EXPECT_EQ(large.alphas(20, 15, 25),
              (Row{123, 254, 255, 255, 255, 255, 255, 255, 255, 254, 123}));
    EXPECT_EQ(large.alphas(15, 18, 22), (Row{44, 94, 123, 94, 44}));
    EXPECT_EQ(large.alphas(25, 18, 22), (Row{44, 94, 123, 94, 44}));
}

}  // namespace
}  // namespace streakfall
