#include <gtest/gtest.h>

#include <array>

#include "PaintBox.h"
#include "shareForLines/path/ColorJitter.h"

namespace streakfall {
namespace {

using Color = std::array<int, 3>;

Color jittered(Color c, const JitterAmounts& amounts, std::uint32_t seed, int randomSeed) {
    const PF_Pixel base{77, static_cast<std::uint8_t>(c[0]), static_cast<std::uint8_t>(c[1]),
                        static_cast<std::uint8_t>(c[2])};
    PF_Pixel out{};
    jitterColor<Depth8>(out, base, amounts, seed, randomSeed);
    EXPECT_EQ(out.alpha, 77);
    return {out.red, out.green, out.blue};
}

TEST(ColorJitter, EightBitExamples) {
    const JitterAmounts some{0.1, 0.2, 0.3};
    EXPECT_EQ(jittered({200, 100, 50}, some, 1, 0), (Color{244, 21, 55}));
    EXPECT_EQ(jittered({200, 100, 50}, some, 1, 7), (Color{148, 107, 49}));
    EXPECT_EQ(jittered({200, 100, 50}, some, 1, 8), (Color{148, 107, 49}));
    EXPECT_EQ(jittered({0, 0, 0}, some, 1, 0), (Color{44, 37, 41}));
    EXPECT_EQ(jittered({255, 255, 255}, {0, 0, 1}, 1, 0), (Color{105, 105, 105}));
    EXPECT_EQ(jittered({0, 0, 0}, {5, 0, 0}, 3, 0), (Color{0, 0, 0}));
}

TEST(ColorJitter, TheRoundTripTruncates) {
    EXPECT_EQ(jittered({200, 100, 50}, {}, 5, 0), (Color{200, 100, 50}));
    EXPECT_EQ(jittered({33, 33, 33}, {}, 5, 0), (Color{32, 32, 32}));
    int lost = 0;
    for (int v = 0; v < 256; ++v) {
        const int out = jittered({v, v, v}, {}, 5, 0)[0];
        EXPECT_TRUE(out == v || out == v - 1) << v;
        lost += out != v;
        PF_Pixel16 grey{0, Depth16::penColor(static_cast<std::uint8_t>(v)), 0, 0}, kept{};
        grey.green = grey.blue = grey.red;
        jitterColor<Depth16>(kept, grey, {}, 5, 0);
        EXPECT_EQ(kept.red, grey.red) << v;
    }
    EXPECT_EQ(lost, 24);
}

TEST(ColorJitter, HueWrapsAndTheRestReflects) {
    const Hsv red{0.05, 1.0, 1.0};
    const Rgb wrapped = shiftColor(red, {-0.1, 0, 0});  // 0.95 of a turn
    EXPECT_DOUBLE_EQ(wrapped.r, 1.0);
    EXPECT_NEAR(wrapped.b, 0.3, 1e-12);
    const Rgb reflected = shiftColor({0, 0, 0.25}, {0, 0, -0.5});
    EXPECT_DOUBLE_EQ(reflected.r, 0.25);
}

}  // namespace
}  // namespace streakfall
