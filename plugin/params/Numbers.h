// Numbers as the settings file holds them, the same under every locale of the host.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace streakfall {

// As C's "%f" prints in the "C" locale: six decimals, whatever the size.
std::string sixDecimals(double value);

// The decimal number at the front of the text, behind blanks; 0 for a text that does not begin
// with one. A number too large for a double gives the largest of its sign.
double parseDecimal(std::string_view text);

// Rounded to single precision; what lies beyond its range gives the largest of its sign.
float narrowed(double value);

// 16.16, cut toward zero; what lies beyond gives the end of the range.
std::int32_t degreesToFixed(double degrees);

constexpr double fixedToDegrees(std::int32_t fixed) { return fixed * 1.52587890625e-05; }

}  // namespace streakfall
