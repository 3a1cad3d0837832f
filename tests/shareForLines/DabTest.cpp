#include <gtest/gtest.h>

#include <vector>

#include "PaintBox.h"
#include "shareForLines/disc/CirclePath.h"

namespace streakfall {
namespace {

TEST(CoverageTable, BlendsNeighbouringRows) {
    CoverageBlend w;
    setCoverageBlend(w, 0.25);
    EXPECT_EQ(w.weightHigh, 16384);
    EXPECT_EQ(coverageAt(w, -1.0), 64);
    setCoverageBlend(w, 3.0);
    EXPECT_EQ(w.weightHigh, 0);
    EXPECT_EQ(w.rowLow, 3);
    setCoverageBlend(w, 11.0);
    EXPECT_EQ(coverageAt(w, 0.0), 127);
    setCoverageBlend(w, 4000.0);
    EXPECT_EQ(coverageAt(w, 0.0), 127);
    EXPECT_EQ(coverageAt(w, -0.97), 255);
    EXPECT_EQ(coverageAt(w, 0.90625), 0);
}

TEST(CoverageTable, FallsFromFullToNone) {
    for (int row = 1; row < kCoverageRows; ++row) {
        EXPECT_EQ(EdgeCoverageTable[row][0], 255);
        EXPECT_EQ(EdgeCoverageTable[row][31], 0);
        for (int c = 1; c < kCoverageColumns; ++c) {
            EXPECT_LE(EdgeCoverageTable[row][c], EdgeCoverageTable[row][c - 1]) << row << " " << c;
        }
        EXPECT_LT(3 * EdgeCoverageTable[row][coverageColumn(kFaint)], 255);
    }
}

TEST(CirclePath, WalksTheWorkedExample) {
    const DabCentre c = quantiseCentre(10.3, 20.7);
    EXPECT_EQ(c.fx, 5);
    EXPECT_EQ(c.fy, 11);
    std::vector<std::pair<int, int>> path;
    walkCircle(c, 6.5, [&](int X, int Y, const Arc&) { path.emplace_back(X, Y); });
    ASSERT_EQ(path.size(), 37u);
    const std::pair<int, int> first[] = {{2, 7}, {3, 7}, {4, 6}, {5, 5}, {6, 4}};
    for (std::size_t i = 0; i < 5; ++i) EXPECT_EQ(path[i], first[i]) << i;
    EXPECT_EQ(path.back(), (std::pair{1, 7}));
    EXPECT_EQ(quantiseCentre(7.98, 7.98).fx, 16);
}

}  // namespace
}  // namespace streakfall
