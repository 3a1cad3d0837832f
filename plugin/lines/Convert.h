// Conversions from double to integer that are defined for every input.
//
// Parameter values can come from an expression or a damaged file, so a quotient or a position
// may leave the integer's range or be no number at all. The language leaves such a conversion
// undefined; here it saturates, and NaN gives 0.
#pragma once

#include <cstdint>

namespace streakfall {

// Cut toward zero, saturating; NaN gives 0.
inline std::int32_t truncToI32(double value) {
    if (value >= 2147483647.0) return INT32_MAX;
    if (value <= -2147483648.0) return INT32_MIN;
    return value == value ? static_cast<std::int32_t>(value) : 0;
}

// Cut toward zero, saturating at 2^53, below which doubles tell neighbours apart; NaN gives 0.
inline std::int64_t truncToI64(double value) {
    constexpr double kLimit = 9007199254740992.0;
    if (value >= kLimit) return std::int64_t{1} << 53;
    if (value <= -kLimit) return -(std::int64_t{1} << 53);
    return value == value ? static_cast<std::int64_t>(value) : 0;
}

}  // namespace streakfall
