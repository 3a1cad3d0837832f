#include <gtest/gtest.h>

#include "PaintBox.h"
#include "shareForLines/canvas/MergePixel.h"

namespace streakfall {
namespace {

TEST(PixelDepth, PenForms) {
    EXPECT_EQ(Depth8::penAlpha(0.5), 127);
    EXPECT_EQ(Depth16::penAlpha(0.5), 16384);
    EXPECT_EQ(DepthFloat::penAlpha(0.5), 0.5f);
    EXPECT_EQ(Depth16::penColor(255), 32768);
    EXPECT_EQ(Depth16::penColor(128), 16448);
    EXPECT_EQ(DepthFloat::penColor(255), 1.0f);
}

// The truncated product with the double nearest 1/255 loses nothing against the quotient.
TEST(PixelDepth, CoveredAlphaIsTheIntegerQuotient) {
    for (int alpha = 0; alpha <= 255; ++alpha) {
        for (int g = 0; g <= 255; ++g) {
            ASSERT_EQ(Depth8::coverAlpha(static_cast<std::uint8_t>(alpha), g), alpha * g / 255);
        }
    }
    for (int alpha = 0; alpha <= 32768; alpha += 7) {
        for (int g = 0; g <= 255; ++g) {
            ASSERT_EQ(Depth16::coverAlpha(static_cast<std::uint16_t>(alpha), g), alpha * g / 255);
        }
    }
}

template <class D>
class Merge : public ::testing::Test {};
TYPED_TEST_SUITE(Merge, Depths);

TYPED_TEST(Merge, OneColourTakesTheLargerAlphaInEitherOrder) {
    const auto pen = penOf<TypeParam>(10, 20, 30);
    const auto low = TypeParam::penAlpha(0.25), high = TypeParam::penAlpha(0.75);
    for (const auto& order : {std::pair{low, high}, std::pair{high, low}}) {
        typename TypeParam::Pixel pixel{};
        mergePixel<TypeParam>(pixel, pen, order.first);
        mergePixel<TypeParam>(pixel, pen, order.second);
        EXPECT_EQ(pixel.alpha, high);
        EXPECT_EQ(pixel.red, pen.red);
    }
}

TYPED_TEST(Merge, WhiteReplacesAndNothingStaysAway) {
    const auto old = penOf<TypeParam>(200, 100, 50, 0.5);
    const auto pen = penOf<TypeParam>(1, 2, 3);
    auto pixel = old;
    mergePixel<TypeParam>(pixel, pen, 0);
    EXPECT_EQ(pixel.red, old.red);
    mergePixel<TypeParam>(pixel, pen, TypeParam::kWhite);
    EXPECT_EQ(pixel.alpha, TypeParam::kWhite);
    EXPECT_EQ(pixel.blue, pen.blue);
    typename TypeParam::Pixel stale = old;  // alpha 0: the colour bytes carry no meaning
    stale.alpha = 0;
    mergePixel<TypeParam>(stale, pen, TypeParam::penAlpha(0.25));
    EXPECT_EQ(stale.green, pen.green);
}

TEST(MergeNumbers, EightBitExamples) {
    PF_Pixel pixel{255, 255, 0, 0};
    mergePixel<Depth8>(pixel, PF_Pixel{0, 0, 255, 0}, 128);
    EXPECT_EQ(pixel.red, 126);
    EXPECT_EQ(pixel.green, 128);
    EXPECT_EQ(pixel.alpha, 255);
    pixel = {128, 90, 90, 90};
    mergePixel<Depth8>(pixel, PF_Pixel{0, 200, 10, 0}, 128);
    EXPECT_EQ(pixel.red, (200 * 128 + 90 * 63) / 191);
    EXPECT_EQ(pixel.alpha, 128);
    pixel = {200, 0, 0, 255};
    mergePixel<Depth8>(pixel, PF_Pixel{0, 255, 0, 0}, 100);
    EXPECT_EQ(pixel.red, 255 * 100 / 221);
    EXPECT_EQ(pixel.alpha, 200);
}

}  // namespace
}  // namespace streakfall
