// What ArcEnds says of a large dab, pixel by pixel, against the walk round it.
#include <gtest/gtest.h>

#include <array>
#include <cmath>

#include "Chance.h"
#include "shareForLines/disc/CirclePath.h"
#include "shareForLines/simd/ArcEnds.h"
#include "shareForLines/simd/InstructionSet.h"

namespace streakfall {
namespace {

constexpr int kReach = 10;  // pixels round a dab's centre that are looked at
constexpr int kNowhere = 1000;

struct Told {
    int plots = 0;
    bool interior = false;

    bool operator==(const Told&) const = default;
};

class Outline {
  public:
    Outline(const DabCentre& c, double r) : centre(c), radius(r) {
        left.fill(-kNowhere);
        right.fill(kNowhere);
        walkCircle(c, r, [&](std::int32_t x, std::int32_t y, const Arc& arc) {
            const std::int32_t side = signedDistance(c, r, x, y) < 0 ? 1 : -1;
            plot(x, y);
            plot(x + side * arc.outwardX, y + side * arc.outwardY);
        });
    }

    Told walked(int x, int y) const {
        const int n = plots[index(y)][index(x)];
        const int from = left[index(y)], to = right[index(y)];
        const bool filled = from != -kNowhere && to != kNowhere && from <= x && x <= to;
        return {n, n == 0 && filled};
    }

    Told described(const ArcEnds& ends, int x, int y) const {
        const bool far = 16 * y >= centre.fy, beyond = 16 * x >= centre.fx;
        const Range& columns = far ? ends.flatBottom : ends.flatTop;
        const Range& rows = beyond ? ends.steepRight : ends.steepLeft;
        Told told;
        told.plots += columns.from <= x && x <= columns.to && straddles(x, y, 0, far ? 1 : -1);
        told.plots += rows.from <= y && y <= rows.to && straddles(x, y, beyond ? 1 : -1, 0);
        if (ends.isOdd && x == ends.once.x && y == ends.once.y) --told.plots;
        if (ends.isOdd && x == ends.extra.x && y == ends.extra.y) ++told.plots;
        told.interior = told.plots == 0 && isInside(x, y);
        return told;
    }

  private:
    static std::size_t index(int v) { return static_cast<std::size_t>(v + kReach); }
    void plot(int x, int y) {
        ++plots[index(y)][index(x)];
        auto& a = left[index(y)];
        auto& b = right[index(y)];
        if (x <= truncToI32(centre.cx)) {
            a = std::max(a, x + 1);
        } else {
            b = std::min(b, x - 1);
        }
    }
    bool isInside(int x, int y) const { return signedDistance(centre, radius, x, y) < 0; }
    // Between the pixel and its neighbour outward, if it lies inside, else inward.
    bool straddles(int x, int y, int outX, int outY) const {
        const bool in = isInside(x, y);
        return in != isInside(in ? x + outX : x - outX, in ? y + outY : y - outY);
    }

    const DabCentre centre;
    const double radius;
    std::array<std::array<int, 2 * kReach + 1>, 2 * kReach + 1> plots{};
    std::array<int, 2 * kReach + 1> left, right;
};

// From 6.1 on there are no odd dabs any more.
TEST(ArcEnds, TellsWhatTheWalkPlots) {
    if (instructionSet() < InstructionSet::kAvx2) GTEST_SKIP() << "no AVX2 here";
    Chance chance(4);
    int odd = 0;
    for (int n = 0; n < 100000; ++n) {
        const double r = n % 4 == 0 ? 5.0 + 0.1 * chance.below(20) : chance.between(5.0, 7.0);
        const int fx = chance.below(17), fy = chance.below(17);
        const DabCentre c{0, 0, fx, fy, 0.0625 * fx, 0.0625 * fy};
        const ArcEnds ends(c, r);
        odd += ends.isOdd;
        const Outline outline(c, r);
        for (int y = -kReach; y <= kReach; ++y) {
            for (int x = -kReach; x <= kReach; ++x) {
                const Told told = outline.described(ends, x, y), wanted = outline.walked(x, y);
                ASSERT_TRUE(told == wanted)
                    << "radius " << r << " at " << fx << "/16, " << fy << "/16: pixel " << x << ", "
                    << y << " plotted " << told.plots << " for " << wanted.plots;
            }
        }
    }
    EXPECT_GT(odd, 500);
}

}  // namespace
}  // namespace streakfall
