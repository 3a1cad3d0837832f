// Small helpers on text that every parser of the program shares. Numbers are read the same under
// every locale: the decimal sign is the point.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tool {

[[nodiscard]] std::string_view trimmed(std::string_view text);
[[nodiscard]] std::string lowered(std::string_view text);
[[nodiscard]] std::vector<std::string_view> split(std::string_view text, char separator);

// The whole text as a number, blanks around it aside; nothing when any of it is something else,
// when the number does not fit, or when it is not finite.
[[nodiscard]] std::optional<int> parseInt(std::string_view text);
[[nodiscard]] std::optional<double> parseNumber(std::string_view text);

// Insertions, deletions and replacements that turn one text into the other, case aside.
[[nodiscard]] int editDistance(std::string_view a, std::string_view b);

// Those names that the wanted one may be a slip of, the likeliest first: three at most, and one at
// least unless there are none. A part of a name counts as near: "Seed" is meant for "Random Seed".
[[nodiscard]] std::vector<std::string> nearestOf(std::string_view wanted,
                                                 const std::vector<std::string>& names);

// "a, b and c" style would hide where a name begins or ends in a blank: names come quoted.
[[nodiscard]] std::string quotedList(const std::vector<std::string>& names);

}  // namespace tool
