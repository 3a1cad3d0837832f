// The merge of eight pixels against mergePixel on each: alphas, branches, quotients, what no
// stroke reaches (alphas below 0 and above white, infinities, NaN).
#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <limits>
#include <random>

#include "PaintBox.h"
#include "shareForLines/fast/OrderOfPaint.h"
#include "shareForLines/simd/EightPixels.h"
#include "shareForLines/simd/InstructionSet.h"
#include "shareForLines/simd/Lanes.h"

namespace streakfall {
namespace {

constexpr int kCount = 8;

#include "shareForLines/simd/Begin.h"

template <class Depth>
__attribute__((noinline)) void restRow(typename Depth::Pixel* row,
                                       const typename Depth::Pixel& pen) {
    const avx2::EightPixels<Depth> eight(pen);
    eight.store(row, eight.rested(eight.load(row)));
}

template <class Depth>
__attribute__((noinline)) unsigned doneOf(const typename Depth::Pixel* row,
                                          const typename Depth::Pixel& pen) {
    const avx2::EightPixels<Depth> eight(pen);
    return lanes::bits(lanes::ints(eight.isDone(eight.load(row))));
}

// Merges eight pixels, by coverage, again as long as it says that this could change one.
template <class Depth>
__attribute__((noinline)) void mergeRow(typename Depth::Pixel* row,
                                        const typename Depth::Pixel& pen,
                                        const std::int32_t* coverage, int times) {
    const avx2::EightPixels<Depth> eight(pen);
    auto pixels = eight.load(row);
    bool changes = true;
    for (int n = 0; changes && n < times; ++n) {
        changes = eight.merge(pixels, eight.alphas(avx2::load(coverage)));
    }
    eight.store(row, pixels);
}

#include "shareForLines/simd/End.h"

std::mt19937 chance(20);

int below(int n) { return std::uniform_int_distribution<int>(0, n - 1)(chance); }

template <class Depth>
typename Depth::Channel anyChannel() {
    const int white = static_cast<int>(Depth::kWhite);
    const int nearEnds[] = {0, 1, 2, white / 2, white - 1, white};
    return static_cast<typename Depth::Channel>(below(2) == 0 ? nearEnds[below(6)]
                                                              : below(white + 1));
}

// The one NaN that arithmetic makes here; so its sign, too, must come out right.
const float kNan = std::bit_cast<float>(0xFFC00000u);

template <>
float anyChannel<DepthFloat>() {
    using Limits = std::numeric_limits<float>;
    static const float special[] = {0.0f,
                                    -0.0f,
                                    1.0f,
                                    1.0f + Limits::epsilon(),
                                    -1e-10f,
                                    -0.5f,
                                    0.5f,
                                    Limits::denorm_min(),
                                    1e-39f,
                                    -1e-39f,
                                    2.0f,
                                    1.0f - Limits::epsilon(),
                                    -1.0f,
                                    1e30f,
                                    kNan,
                                    Limits::infinity(),
                                    -Limits::infinity()};
    if (below(3) == 0) return special[below(std::size(special))];
    return std::uniform_real_distribution<float>(0.0f, 1.0f)(chance);
}

// Alphas that a pen has: at most white, and in float at times a hair below 0.
template <class Depth>
typename Depth::Channel anyPenAlpha() {
    return anyChannel<Depth>();
}
template <>
float anyPenAlpha<DepthFloat>() {
    const float a = anyChannel<DepthFloat>();
    return a > 1.0f || std::isnan(a) ? 1.0f : std::max(a, -1e-10f);
}

template <class Depth>
class EightPixels : public ::testing::Test {
  public:
    using Pixel = typename Depth::Pixel;

    void SetUp() override {
        if (instructionSet() < InstructionSet::kAvx2) GTEST_SKIP() << "no AVX2 here";
    }

    // Merges both ways; true when the bits are equal. The pixel behind the row must stay.
    bool agree(const Pixel (&row)[kCount + 1], int count, const Pixel& pen,
               const std::int32_t (&coverage)[kCount], int times) {
        Pixel wanted[kCount + 1], got[kCount + 1];
        std::memcpy(wanted, row, sizeof row);
        std::memcpy(got, row, sizeof row);
        for (int i = 0; i < count; ++i) {
            const auto a = coverage[i] == avx2::kInterior
                               ? pen.alpha
                               : Depth::coverAlpha(pen.alpha, coverage[i]);
            for (int n = 0; n < times; ++n) mergePixel<Depth>(wanted[i], pen, a);
        }
        mergeRow<Depth>(got, pen, coverage, times);
        return std::memcmp(wanted, got, sizeof row) == 0;
    }
};
TYPED_TEST_SUITE(EightPixels, Depths);

// Every coverage of every alpha, or in float of many; an empty pixel shows the alpha it gets.
TYPED_TEST(EightPixels, AlphaOfEachCoverage) {
    constexpr bool kFloat = std::is_same_v<TypeParam, DepthFloat>;
    const int alphas = kFloat ? 20000 : static_cast<int>(TypeParam::kWhite);
    const typename TypeParam::Pixel row[kCount + 1] = {};
    for (int alpha = 1; alpha <= alphas; ++alpha) {
        const auto penAlpha =
            kFloat ? anyPenAlpha<TypeParam>() : static_cast<typename TypeParam::Channel>(alpha);
        for (std::int32_t g = 1; g <= avx2::kInterior; g += kCount) {
            const std::int32_t coverage[kCount] = {g,     g + 1, g + 2, g + 3,
                                                   g + 4, g + 5, g + 6, g + 7};
            ASSERT_TRUE(this->agree(row, kCount, {penAlpha, 1, 0, 1}, coverage, 1))
                << "alpha " << penAlpha << " coverage " << g;
        }
    }
}

TYPED_TEST(EightPixels, RandomPixels) {
    using P = typename TypeParam::Pixel;
    const auto any = [] { return anyChannel<TypeParam>(); };
    for (int n = 0; n < 200000; ++n) {
        const P pen{anyPenAlpha<TypeParam>(), any(), any(), any()};
        P row[kCount + 1];
        std::int32_t coverage[kCount];
        for (P& p : row) {
            p = {any(), any(), any(), any()};
            if (below(3) == 0) p = {p.alpha, pen.red, pen.green, pen.blue};
        }
        const int count = below(4) == 0 ? 1 + below(kCount) : kCount;
        for (int i = 0; i < kCount; ++i) {
            coverage[i] = i >= count || below(3) == 0 ? 0
                          : below(4) == 0             ? avx2::kInterior
                                                      : below(256);
        }
        ASSERT_TRUE(this->agree(row, count, pen, coverage, 1 + below(3))) << "round " << n;
    }
}

// Those that have the pen's colour or lie a step off, at any alpha; no paint may change one that is
// done, and one that holds the pen is.
TYPED_TEST(EightPixels, DoneOnesStay) {
    using P = typename TypeParam::Pixel;
    using Channel = typename TypeParam::Channel;
    const auto any = [] { return anyPenAlpha<TypeParam>(); };
    const auto near = [](Channel c) {
        const bool above = c < TypeParam::kWhite && below(8) == 0;
        return static_cast<Channel>(above ? c + 1 : c > 0 && below(3) == 0 ? c - 1 : c);
    };
    int done = 0;
    for (int n = 0; n < 100000; ++n) {
        const P pen{any(), any(), any(), any()};
        if (!insideGivesMost<TypeParam>(pen)) continue;
        P row[kCount];
        for (P& p : row) {
            p = {below(2) == 0 ? pen.alpha : any(), near(pen.red), near(pen.green), near(pen.blue)};
        }
        const unsigned bits = doneOf<TypeParam>(row, pen);
        for (int i = 0; i < kCount; ++i) {
            const P& p = row[i];
            const bool same = p.red == pen.red && p.green == pen.green && p.blue == pen.blue;
            ASSERT_TRUE((bits >> i & 1) != 0 || !same || p.alpha < pen.alpha) << "round " << n;
            if ((bits >> i & 1) == 0) continue;
            done += !same;
            P after = p;
            mergePixel<TypeParam>(after, pen, pen.alpha);
            for (int times = 0; times < 4; ++times) {
                mergePixel<TypeParam>(after, pen, TypeParam::coverAlpha(pen.alpha, below(256)));
            }
            ASSERT_EQ(std::memcmp(&after, &p, sizeof p), 0) << "round " << n;
        }
    }
    if constexpr (!std::is_same_v<TypeParam, DepthFloat>) {
        EXPECT_GT(done, 1000);  // a step off
    }
}

// Merges that halve a difference, with any others before, between and behind.
template <class Depth>
void expectRest() {
    using P = typename Depth::Pixel;
    using Channel = typename Depth::Channel;
    const auto any = [] { return anyChannel<Depth>(); };
    int rested = 0;
    for (int n = 0; n < 200000; ++n) {
        const P pen{any(), any(), any(), any()};
        const Channel one = any(), other = any();
        const Channel least = std::min(one, other), most = std::max(one, other);
        P row[kCount];
        for (P& p : row) p = {any(), any(), any(), any()};
        const auto [low, high] = std::minmax_element(
            row, row + kCount, [](const P& a, const P& b) { return a.alpha < b.alpha; });
        const Channel leastStored = low->alpha, mostStored = std::max(most, high->alpha);
        if (!halvesDifference<Depth>(least, most, leastStored, mostStored)) continue;
        ++rested;
        P wanted[kCount];
        std::copy_n(row, kCount, wanted);
        for (P& p : wanted) {
            for (int left = kMergesToRest<Depth>; left > 0;) {
                const int alpha = below(3) == 0 ? below(most) + 1 : least + below(most - least + 1);
                mergePixel<Depth>(p, pen, static_cast<Channel>(alpha));
                left -= alpha >= least;
            }
        }
        restRow<Depth>(row, pen);
        for (int i = 0; i < kCount; ++i) {
            row[i].alpha = wanted[i].alpha;
            ASSERT_EQ(std::memcmp(&row[i], &wanted[i], sizeof(P)), 0) << "round " << n;
        }
    }
    EXPECT_GT(rested, 1000);
}

TEST(RestedColors, AreThoseThatManyMergesLeave) {
    if (instructionSet() < InstructionSet::kAvx2) GTEST_SKIP() << "no AVX2 here";
    expectRest<Depth8>();
    expectRest<Depth16>();
}

}  // namespace
}  // namespace streakfall
