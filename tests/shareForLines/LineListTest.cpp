// Whole frames against the plain twin, on every instruction set: random lists of lines, by the
// generator of fields and synthetic ones, equal to the bit when the list is done.
#include <gtest/gtest.h>

#include "ListTwin.h"

namespace streakfall {
namespace {

// Of any kind.
ListCase anyFrame(std::uint32_t seed, int width, int height) {
    switch (Chance(seed).below(5)) {
        case 0:
            return randomCover(seed, width, height);
        case 1:
        case 2:
            return randomField(seed, width, height);
        default:
            return randomList(seed, width, height);
    }
}

// Draws a case for each seed. sizeOf(chance): width and height; work: pixel visits of a frame.
template <class Depth, class SizeOf>
void compareFrames(const Seeds& seeds, SizeOf sizeOf, double work,
                   ListCase (*frame)(std::uint32_t, int, int) = anyFrame) {
    std::size_t painted = 0;
    for (std::uint32_t seed = seeds.first; seed < seeds.end; ++seed) {
        Chance chance(seed * 2654435761u);
        const auto [width, height] = sizeOf(chance);
        ListCase c = frame(seed, width, height);
        limitWork(c, work);
        painted += expectSameList<Depth>(c, seed);
        if (::testing::Test::HasFailure()) return;
    }
    EXPECT_GT(painted, 0u);
}

std::pair<int, int> sizeUpTo(Chance& chance, int width, int height) {
    // Narrower than a vector, at times.
    const auto side = [&](int most) {
        return chance.oneIn(8) ? 1 + chance.below(12) : most / 3 + chance.below(most - most / 3);
    };
    return {side(width), side(height)};
}

template <class Depth>
class LineList : public ::testing::Test {};
TYPED_TEST_SUITE(LineList, Depths);

TYPED_TEST(LineList, RandomFrames) {
    compareFrames<TypeParam>(
        {1, 200}, [](Chance& chance) { return sizeUpTo(chance, 200, 140); }, 5e6);
}

TYPED_TEST(LineList, LinesThatHideOthers) {
    compareFrames<TypeParam>(
        {1, 60}, [](Chance& chance) { return sizeUpTo(chance, 200, 140); }, 1e7, randomCover);
}

TYPED_TEST(LineList, SteepLinesThatHideOthers) {
    compareFrames<TypeParam>(
        {1, 40}, [](Chance& chance) { return sizeUpTo(chance, 300, 200); }, 6e7, randomSteepCover);
}

// The long ones take STREAKFALL_STRESS_SEED and STREAKFALL_STRESS_COUNT.
template <class Depth>
class LongLineList : public ::testing::Test {};
TYPED_TEST_SUITE(LongLineList, Depths);

TYPED_TEST(LongLineList, RandomFrames) {
    compareFrames<TypeParam>(
        {1000, 200}, [](Chance& chance) { return sizeUpTo(chance, 640, 360); }, 4e7);
}

TYPED_TEST(LongLineList, SteepLinesThatHideOthers) {
    compareFrames<TypeParam>(
        {4000, 20}, [](Chance& chance) { return sizeUpTo(chance, 640, 360); }, 2e8,
        randomSteepCover);
}

TYPED_TEST(LongLineList, WideAndTallFrames) {
    compareFrames<TypeParam>(
        {2000, 24},
        [](Chance& chance) {
            const int longSide = 4096 - chance.below(3), shortSide = 40 + chance.below(300);
            return chance.oneIn(2) ? std::pair{longSide, shortSide}
                                   : std::pair{shortSide, longSide};
        },
        1e8);
}

TYPED_TEST(LongLineList, LargestFrames) {
    compareFrames<TypeParam>(
        {3000, 3},
        [](Chance&) {
            return std::pair{4096, 4096};
        },
        6e7);
}

}  // namespace
}  // namespace streakfall
