// A set of neighbouring columns of one row, as bits.
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>

#include "shareForLines/Range.h"

namespace streakfall {

class ColumnSet {
  public:
    static constexpr std::int32_t kMaxColumns = 4096;

    // None of these columns, kMaxColumns at most.
    explicit ColumnSet(const Range& columns) : all(columns) {
        std::fill_n(words.begin(), (all.count() + 63) / 64, std::uint64_t{0});
    }

    // Those of `columns` that are among all.
    void add(const Range& columns) {
        const std::int32_t from = std::max(columns.from, all.from) - all.from;
        const std::int32_t to = std::min(columns.to, all.to) - all.from;
        for (std::int32_t i = from; i <= to; i = (i | 63) + 1) {
            const std::int32_t last = std::min(to, i | 63);
            const std::uint64_t upToLast = ~std::uint64_t{0} >> (63 - (last & 63));
            words[static_cast<std::size_t>(i >> 6)] |= upToLast & (~std::uint64_t{0} << (i & 63));
        }
    }

    // The first columns from `column` on that all are, or all are not, in the set.
    Range runFrom(std::int32_t column, bool& inSet) const {
        std::int32_t i = column - all.from;
        const std::uint64_t other = has(i) ? ~std::uint64_t{0} : 0;
        inSet = other != 0;
        const std::int32_t end = all.count();
        while (i < end) {
            const std::uint64_t differs =
                (words[static_cast<std::size_t>(i >> 6)] ^ other) >> (i & 63);
            if (differs != 0) {
                i += std::countr_zero(differs);
                break;
            }
            i = (i | 63) + 1;
        }
        return {column, all.from + std::min(i, end) - 1};
    }

  private:
    bool has(std::int32_t i) const {
        return (words[static_cast<std::size_t>(i >> 6)] >> (i & 63) & 1) != 0;
    }

    Range all;
    std::array<std::uint64_t, kMaxColumns / 64> words;
};

}  // namespace streakfall
