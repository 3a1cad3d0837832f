#include "params/Numbers.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace streakfall {

namespace {

// The digits before the point of the largest double, its sign, the point and six decimals.
constexpr std::size_t kLongestNumber = std::numeric_limits<double>::max_exponent10 + 10;

bool startsNumber(std::string_view text) {
    if (text.starts_with('-')) text.remove_prefix(1);
    if (text.starts_with('.')) text.remove_prefix(1);
    return !text.empty() && text.front() >= '0' && text.front() <= '9';
}

}  // namespace

std::string sixDecimals(double value) {
    char text[kLongestNumber];
    const auto result = std::to_chars(text, text + sizeof text, value, std::chars_format::fixed, 6);
    return {text, result.ptr};
}

double parseDecimal(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
    if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
    if (!startsNumber(text))
        return 0;  // words that also mean numbers, such as "inf", are none here

    double value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec != std::errc::result_out_of_range) {
        return std::clamp(value, std::numeric_limits<double>::lowest(),
                          std::numeric_limits<double>::max());
    }
    // Only the exponent's sign tells too large from too small.
    const std::string_view number(text.data(), result.ptr);
    const bool tooSmall = number.find("e-") != number.npos || number.find("E-") != number.npos;
    if (tooSmall) return 0;
    return std::copysign(std::numeric_limits<double>::max(), text.front() == '-' ? -1.0 : 1.0);
}

float narrowed(double value) {
    constexpr double kLargest = std::numeric_limits<float>::max();
    return static_cast<float>(std::clamp(value, -kLargest, kLargest));
}

std::int32_t degreesToFixed(double degrees) {
    constexpr double kLowest = std::numeric_limits<std::int32_t>::min();
    constexpr double kHighest = std::numeric_limits<std::int32_t>::max();
    return static_cast<std::int32_t>(std::clamp(degrees * 65536.0, kLowest, kHighest));
}

}  // namespace streakfall
