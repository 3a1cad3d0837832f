// Coverage as the twin reads it: the table and the limits are its own, so that a slip in the
// product's shows.
#pragma once

#include <cstdint>

namespace reference {

// Pixels. Bounds that no value inside the sliders' ranges meets.
inline constexpr double kLongestLine = 131072.0;
inline constexpr double kThickestLine = 4096.0;
inline constexpr double kWidestGap = 2048.0;   // that is bridged between two steps of a wave
inline constexpr double kOutlineRadius = 5.0;  // from here on a dab is walked round

// Rows by radius 0 to 11, columns by signed distance in sixteenths from -1.
inline constexpr std::uint8_t kCoverage[12][32] = {
    {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,
     0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0},
    {255, 254, 252, 248, 243, 237, 230, 221, 211, 200, 189, 176, 163, 150, 135, 121,
     107, 93,  80,  67,  56,  46,  36,  28,  21,  15,  11,  7,   4,   2,   1,   0},
    {255, 255, 253, 251, 248, 243, 237, 230, 221, 211, 200, 188, 175, 161, 147, 132,
     117, 102, 88,  75,  63,  51,  41,  32,  24,  18,  12,  8,   4,   2,   1,   0},
    {255, 255, 254, 252, 248, 244, 238, 232, 223, 214, 203, 191, 179, 165, 151, 136,
     121, 106, 91,  78,  65,  53,  43,  33,  25,  18,  13,  8,   5,   2,   1,   0},
    {255, 255, 254, 252, 249, 245, 239, 232, 224, 215, 204, 193, 180, 167, 152, 137,
     122, 107, 93,  79,  66,  54,  44,  34,  26,  19,  13,  8,   5,   2,   1,   0},
    {255, 255, 254, 252, 249, 245, 239, 233, 225, 216, 205, 194, 181, 168, 153, 138,
     123, 108, 94,  80,  67,  55,  44,  35,  26,  19,  13,  9,   5,   2,   1,   0},
    {255, 255, 254, 252, 249, 245, 240, 233, 225, 216, 206, 194, 182, 168, 154, 139,
     124, 109, 94,  80,  68,  56,  45,  35,  27,  19,  13,  9,   5,   2,   1,   0},
    {255, 255, 254, 252, 249, 245, 240, 233, 225, 216, 206, 195, 182, 169, 154, 140,
     124, 109, 95,  81,  68,  56,  45,  35,  27,  20,  14,  9,   5,   2,   1,   0},
    {255, 255, 254, 252, 249, 245, 240, 233, 226, 216, 206, 195, 182, 169, 155, 140,
     125, 110, 95,  81,  68,  56,  45,  35,  27,  20,  14,  9,   5,   3,   1,   0},
    {255, 255, 254, 252, 249, 245, 240, 233, 226, 217, 206, 195, 183, 169, 155, 140,
     125, 110, 95,  81,  68,  56,  45,  36,  27,  20,  14,  9,   5,   3,   1,   0},
    {255, 255, 254, 252, 249, 245, 240, 234, 226, 217, 207, 195, 183, 169, 155, 140,
     125, 110, 96,  82,  69,  56,  46,  36,  27,  20,  14,  9,   5,   3,   1,   0},
    {255, 255, 254, 252, 250, 246, 241, 235, 227, 218, 208, 197, 185, 172, 158, 143,
     127, 112, 97,  83,  70,  58,  47,  37,  28,  20,  14,  9,   5,   3,   1,   0},
};

// Coverage 0 to 255 at signed distance d of a dab of radius r.
inline int coverageOf(double r, double d) {
    const double c = (d + 1.0) * 16.0 + 0.5;
    const int column = !(c > 0.0) ? 0 : c < 32.0 ? static_cast<int>(c) : 31;
    if (r >= 11.0) return kCoverage[11][column];
    const int n = static_cast<int>(r);
    const int weight = static_cast<int>((r - n) * 65536.0);
    const int low = kCoverage[n][column];
    if (weight == 0) return low;
    return (low * (65536 - weight) + kCoverage[n + 1][column] * weight + 32768) >> 16;
}

}  // namespace reference
