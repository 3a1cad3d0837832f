#pragma once

#include <cstdint>

namespace streakfall {

// Neighbouring columns or rows, or dabs; both ends included, empty when `to` lies before `from`.
struct Range {
    std::int32_t from, to;

    bool has(std::int32_t i) const { return i >= from && i <= to; }
    bool empty() const { return to < from; }
    std::int32_t count() const { return to - from + 1; }
};

inline constexpr Range kNone{0, -1};

}  // namespace streakfall
