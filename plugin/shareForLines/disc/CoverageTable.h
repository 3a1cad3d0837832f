// Coverage of a pixel by a dab, read from a fixed table by signed distance and radius.
//
// Rows stand for radii 0 to 11 (11 and above share row 11), columns for the signed distance d of
// the pixel from the circle: column c covers d from (c - 0.5) / 16 - 1 up to (c + 0.5) / 16 - 1,
// so that column 16 is centred on the circle. Row 0 is all zero, which makes a dab of radius
// below 1 fade with its radius.
#pragma once

#include <array>
#include <cstdint>

#include "lines/Convert.h"

namespace streakfall {

inline constexpr int kCoverageRows = 12;
inline constexpr int kCoverageColumns = 32;

extern const std::uint8_t EdgeCoverageTable[kCoverageRows][kCoverageColumns];

// How a radius reads the table: two neighbouring rows in 1/65536 parts that sum to 65536.
struct CoverageBlend {
    std::int32_t rowLow = 0;
    std::int32_t rowHigh = 0;
    std::int32_t weightHigh = 0;
    std::int32_t weightLow = 65536;
};

// r above 0.
inline void setCoverageBlend(CoverageBlend& weights, double r) {
    const std::int32_t n = truncToI32(r);
    const bool top = n >= kCoverageRows - 1;
    weights.rowLow = top ? kCoverageRows - 1 : n;
    weights.rowHigh = top ? kCoverageRows - 1 : n + 1;
    const double fraction = top ? 0.0 : r - n;
    weights.weightHigh = static_cast<std::int32_t>(fraction * 65536.0);
    weights.weightLow = 65536 - weights.weightHigh;
}

inline std::int32_t coverageInColumn(const CoverageBlend& weights, std::int32_t column) {
    const std::int32_t low = EdgeCoverageTable[weights.rowLow][column];
    if (weights.weightHigh == 0) return low;
    const std::int32_t high = EdgeCoverageTable[weights.rowHigh][column];
    return (low * weights.weightLow + high * weights.weightHigh + 32768) >> 16;
}

// All coverages of a radius, by column.
using CoverageByColumn = std::array<std::uint8_t, kCoverageColumns>;

// The table column of signed distance d; a d beyond either end takes the end column.
inline std::int32_t coverageColumn(double d) {
    const double c = (d + 1.0) * 16.0 + 0.5;
    if (!(c > 0.0)) return 0;
    return c < kCoverageColumns ? static_cast<std::int32_t>(c) : kCoverageColumns - 1;
}

// From this signed distance on the coverage is that of the last column, 0 in every row.
inline constexpr double kNoCoverage = (kCoverageColumns - 1.5) / 16.0 - 1.0;
// And from this one on below a third of 255.
inline constexpr double kFaint = 0.25;

// Coverage 0 to 255 at signed distance d.
inline std::int32_t coverageAt(const CoverageBlend& weights, double d) {
    return coverageInColumn(weights, coverageColumn(d));
}

}  // namespace streakfall
