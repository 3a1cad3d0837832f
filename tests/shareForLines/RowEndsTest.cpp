// What eight rows of a dab are said to paint against every single pixel's state.
#include <gtest/gtest.h>

#include <random>

#include "shareForLines/InstructionSet.h"
#include "shareForLines/RowEndsAvx2.h"

namespace streakfall {
namespace {

struct Row {
    Range inner, outer;
    bool flat, mixed;
};

#pragma GCC push_options
#pragma GCC target("avx2")

__attribute__((noinline)) void rowsOf(const LargeDabShape& shape, RowsInside& inside,
                                      std::int32_t dabY, Row (&rows)[avx2::kLanes]) {
    const avx2::RowEnds ends(shape, inside, dabY);
    alignas(32) std::int32_t v[6][avx2::kLanes];
    const auto store = [&](int i, __m256i lanes) __attribute__((always_inline)) {
        _mm256_store_si256(reinterpret_cast<__m256i*>(v[i]), lanes);
    };
    store(0, ends.innerFrom);
    store(1, ends.innerTo);
    store(2, ends.outerFrom);
    store(3, ends.outerTo);
    store(4, ends.flat);
    store(5, ends.mixed);
    for (int i = 0; i < avx2::kLanes; ++i) {
        rows[i] = {{v[0][i], v[1][i]}, {v[2][i], v[3][i]}, v[4][i] != 0, v[5][i] != 0};
    }
}

__attribute__((noinline)) void place(RowsInside& inside, const LargeDabShape& shape) {
    avx2::placeRows(inside, shape);
}

#pragma GCC pop_options

// Inner columns are all interior, and all of the interior but for one pixel at each side of a mixed
// row; what is plotted lies in the outer ones, and in a flat row nowhere else is it plotted.
TEST(RowEnds, BoundWhatADabPaints) {
    if (instructionSet() < InstructionSet::kAvx2) GTEST_SKIP() << "no AVX2 here";
    std::mt19937 random(5);
    const auto between = [&](double low, double high) {
        return std::uniform_real_distribution<double>(low, high)(random);
    };
    static RowsInside inside;
    int missing = 0;
    for (int n = 0; n < 600; ++n) {
        LargeDabShape shape;
        const double r = n % 2 == 0 ? between(5, 20) : between(20, 90);
        if (!shape.place(between(0, 200), between(0, 200), r)) continue;
        place(inside, shape);
        const std::int32_t reach = static_cast<std::int32_t>(r) + 3;
        for (std::int32_t dabY = -reach; dabY <= reach; dabY += avx2::kLanes) {
            Row rows[avx2::kLanes];
            rowsOf(shape, inside, dabY, rows);
            for (std::int32_t i = 0; i < avx2::kLanes && dabY + i <= reach; ++i) {
                const std::int32_t Y = dabY + i;
                const Row& row = rows[i];
                const Range exact = shape.interiorOf(Y);
                const std::int32_t interior = std::max(exact.count(), 0);
                const std::int32_t found = std::max(row.inner.count(), 0);
                ASSERT_GE(found, interior - (row.mixed ? 2 : 0)) << "r " << r << " row " << Y;
                missing += interior - found;
                for (std::int32_t X = -reach - 2; X <= reach + 2; ++X) {
                    const std::int32_t x = X + shape.centre.xi;
                    const auto state = shape.stateOf(X, Y);
                    if (row.inner.has(x)) {
                        ASSERT_EQ(state, LargeDabShape::kInterior) << X << ", " << Y;
                    }
                    if (state != LargeDabShape::kUntouched) {
                        ASSERT_TRUE(row.outer.has(x)) << X << ", " << Y;
                    }
                    if (row.flat && row.outer.has(x) && !row.inner.has(x)) {
                        ASSERT_NE(state, LargeDabShape::kInterior) << X << ", " << Y;
                    }
                }
            }
        }
    }
    EXPECT_GT(missing, 0) << "no mixed row told less than there is: are there any?";
}

}  // namespace
}  // namespace streakfall
