// The transfer against its formula in plain doubles, rounded at the very end.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <vector>

#include "host/Transfer.h"
#include "host/Worlds.h"

using namespace standin;

namespace {

struct Ratios {
    double alpha, red;
};

Ratios laid(const Ratios& s, const Ratios& d, double mask, double opacity) {
    const double a = s.alpha * mask * opacity;
    const double alpha = a + d.alpha * (1 - a);
    return {alpha, alpha > 0 ? (s.red * a + d.red * d.alpha * (1 - a)) / alpha : d.red};
}

// Three worlds of one row each, laid with one call.
template <class Pixel>
struct Row {
    explicit Row(int width)
        : source(make(width)), mask(make(width)), destination(make(width)), before(width) {}

    static std::unique_ptr<WorldBuffer> make(int width) {
        return WorldBuffer::make(width, 1, kDepthOf<Pixel>, HostOffer{}, true);
    }
    static Pixel* pixels(WorldBuffer& buffer) {
        return reinterpret_cast<Pixel*>(buffer.world().data);
    }
    Pixel& s(int x) { return pixels(*source)[x]; }
    Pixel& m(int x) { return pixels(*mask)[x]; }
    Pixel& d(int x) { return pixels(*destination)[x]; }

    void lay(A_u_char opacity, A_u_short opacitySu) {
        const auto width = static_cast<int>(before.size());
        std::memcpy(before.data(), &d(0), before.size() * sizeof(Pixel));
        transferInFront({source->world(),
                         {0, 0, width, 1},
                         0,
                         0,
                         &mask->world(),
                         {0, 0},
                         opacity,
                         opacitySu,
                         destination->world()},
                        kDepthOf<Pixel>);
    }

    std::unique_ptr<WorldBuffer> source, mask, destination;
    std::vector<Pixel> before;
};

// Compares channel values; a tie may round either way, so near one both neighbours are right.
void expectNearest(double wanted, unsigned got, const char* what, int x) {
    ASSERT_LE(std::fabs(wanted - got), 0.5 + 1e-6) << what << " of pixel " << x;
}

template <class Pixel>
void expectRow(Row<Pixel>& row, double white, double opacity) {
    for (int x = 0; x < static_cast<int>(row.before.size()); ++x) {
        const Pixel& s = row.s(x);
        const Pixel& b = row.before[x];
        const Pixel& d = row.d(x);
        if (s.alpha == 0 || row.m(x).alpha == 0) {
            ASSERT_EQ(std::memcmp(&b, &d, sizeof b), 0) << "transparent pixel " << x;
            continue;
        }
        const Ratios wanted =
            laid({s.alpha / white, s.red / white}, {b.alpha / white, b.red / white},
                 row.m(x).alpha / white, opacity);
        ASSERT_NO_FATAL_FAILURE(expectNearest(wanted.alpha * white, d.alpha, "alpha", x));
        ASSERT_NO_FATAL_FAILURE(expectNearest(wanted.red * white, d.red, "red", x));
    }
}

}  // namespace

TEST(Transfer, EightBitsAreRoundedRightOverAllAlphas) {
    Row<PF_Pixel> row(256);
    for (const int opacity : {255, 77}) {
        for (const int mask : {0, 1, 128, 254, 255}) {
            for (int alpha = 0; alpha < 256; ++alpha) {
                for (int x = 0; x < 256; ++x) {
                    const auto mixed = static_cast<A_u_char>(alpha * 37 + x * 101);
                    row.s(x) = {static_cast<A_u_char>(alpha), mixed, 0, 255};
                    row.m(x) = {static_cast<A_u_char>(mask), 9, 9, 9};
                    row.d(x) = {static_cast<A_u_char>(x), static_cast<A_u_char>(~mixed * 3), 255,
                                0};
                }
                row.lay(static_cast<A_u_char>(opacity), 0);
                ASSERT_NO_FATAL_FAILURE(expectRow(row, 255, opacity / 255.0))
                    << "source alpha " << alpha << ", mask " << mask;
            }
        }
    }
}

TEST(Transfer, SixteenBitsAreRoundedRightAcrossTheRange) {
    const int stride = 331;
    const int count = 32768 / stride + 2;
    Row<PF_Pixel16> row(count);
    const auto value = [&](int i) {
        return static_cast<A_u_short>(i == count - 1 ? 32768 : i * stride);
    };
    for (const int opacity : {32768, 20011}) {
        for (const int mask : {0, 1, 16384, 32767, 32768}) {
            for (int i = 0; i < count; ++i) {
                for (int x = 0; x < count; ++x) {
                    row.s(x) = {value(i), value((i * 7 + x * 3) % count), 0, 32768};
                    row.m(x) = {static_cast<A_u_short>(mask), 0, 0, 0};
                    row.d(x) = {value(x), value((i + x * 11) % count), 0, 0};
                }
                row.lay(0, static_cast<A_u_short>(opacity));
                ASSERT_NO_FATAL_FAILURE(expectRow(row, 32768, opacity / 32768.0));
            }
        }
    }
}

TEST(Transfer, FloatKeepsColoursBeyondWhite) {
    Row<PF_PixelFloat> row(3);
    row.s(0) = {0.25f, 4.0f, 0, 0};
    row.d(0) = {0.5f, -1.0f, 0, 0};
    row.s(1) = {1.0f, 2.0f, 0, 0};
    row.d(1) = {0.0f, 9.0f, 0, 0};
    row.s(2) = {0.0f, 2.0f, 0, 0};
    row.d(2) = {0.3f, 9.0f, 0, 0};
    for (int x = 0; x < 3; ++x) {
        row.m(x) = {1, 0, 0, 0};
    }
    row.lay(255, 32768);
    EXPECT_FLOAT_EQ(row.d(0).alpha, 0.625f);
    EXPECT_FLOAT_EQ(row.d(0).red, (4.0f * 0.25f - 0.375f) / 0.625f);
    EXPECT_EQ(row.d(1).alpha, 1.0f);
    EXPECT_EQ(row.d(1).red, 2.0f);
    EXPECT_EQ(row.d(2).red, 9.0f);
}

// Source pixels that would land outside, or that have no mask over them, are cut off.
TEST(Transfer, CutsAtEveryEdge) {
    const auto make = [](int width, int height) {
        return WorldBuffer::make(width, height, Depth::bits8, HostOffer{}, true);
    };
    for (int shift = -5; shift <= 5; ++shift) {
        auto source = make(6, 4);
        auto mask = make(5, 9);
        auto destination = make(4, 5);
        source->load(Image::filled(6, 4, Depth::bits8, 1, 1, 1, 1), 0, 0);
        mask->load(Image::filled(5, 9, Depth::bits8, 1, 0, 0, 0), 0, 0);
        transferInFront({source->world(),
                         {1, -3, 9, 9},
                         shift,
                         shift,
                         &mask->world(),
                         {2, -1},
                         255,
                         0,
                         destination->world()},
                        Depth::bits8);
        const Image laidOver = destination->toImage();
        for (int y = 0; y < 5; ++y) {
            for (int x = 0; x < 4; ++x) {
                const int sx = x - shift + 1;
                const int sy = y - shift - 3;
                const bool visible = sx >= 2 && sx < 6 && sy >= 0 && sy < 4;
                ASSERT_EQ(laidOver.row<PF_Pixel>(y)[x].alpha, visible ? 255 : 0)
                    << "shift " << shift << ", pixel " << x << ", " << y;
            }
        }
        EXPECT_TRUE(destination->marginsIntact());
    }
}
