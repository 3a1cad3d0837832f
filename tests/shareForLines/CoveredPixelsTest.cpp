#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "shareForLines/CoveredPixels.h"

namespace streakfall {
namespace {

// Against a plain array: ranges of all lengths, in boxes of all widths, one set used again.
TEST(CoveredPixels, IsASetOfPixels) {
    std::mt19937 random(1);
    const auto below = [&](std::int32_t n) { return static_cast<std::int32_t>(random() % n); };
    CoveredPixels set;
    for (int round = 0; round < 300; ++round) {
        const Range columns{below(40), 40 + below(200)}, rows{below(9), 9 + below(9)};
        const std::int32_t y = rows.from + below(rows.count());
        const auto randomColumns = [&] {
            const std::int32_t from = columns.from + below(columns.count());
            return Range{from, from + below(columns.to - from + 1)};
        };
        std::vector<bool> expected(static_cast<std::size_t>(columns.to) + 1);
        set.start(columns, rows);
        for (int n = below(12); n > 0; --n) {
            const Range part = randomColumns();
            set.add(part, y);
            for (std::int32_t x = part.from; x <= part.to; ++x) expected[x] = true;
        }
        for (int n = 0; n < 40; ++n) {
            const Range asked = randomColumns();
            bool all = true;
            for (std::int32_t x = asked.from; x <= asked.to; ++x) all = all && expected[x];
            ASSERT_EQ(set.holds(asked, y), all) << asked.from << " to " << asked.to;
        }
        EXPECT_TRUE(set.holds({columns.to, columns.from}, y)) << "no columns";
        std::vector<bool> told(expected.size());
        std::int32_t last = -2;
        set.forRanges(y, [&](const Range& part) {
            EXPECT_GT(part.from, last + 1) << "neighbours are one range";
            last = part.to;
            for (std::int32_t x = part.from; x <= part.to; ++x) told[x] = true;
        });
        ASSERT_EQ(told, expected);
        for (std::int32_t other = rows.from; other <= rows.to; ++other) {
            if (other != y) set.forRanges(other, [](const Range&) { FAIL() << "another row"; });
        }
    }
}

}  // namespace
}  // namespace streakfall
