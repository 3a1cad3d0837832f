// Which rows of a hollow dab are filled whole, and what the others keep.
#pragma once

#include <cstdint>

namespace streakfall {

inline constexpr std::int32_t kHollowRim = 3;   // pixels that a hollow row keeps at each end
inline constexpr std::int32_t kWholeDepth = 4;  // rows nearer to the top or bottom are filled whole

// Row of interior columns a to b. rowDepth: rows from it to the dab's top or bottom, roughly.
inline bool fillsWholeRow(std::int32_t a, std::int32_t b, std::int32_t rowDepth) {
    return b - a < 2 * kHollowRim || rowDepth < kWholeDepth;
}

}  // namespace streakfall
