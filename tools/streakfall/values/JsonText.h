// Reading JSON that a person wrote: a byte-order mark is read over, and what is wrong is told with
// its place.
#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

namespace tool {

// Throws Failure (usage): line and column of what is no JSON, the name of a key that is given twice
// in one object or whose number does not fit a double; nesting deeper than any value's.
[[nodiscard]] nlohmann::ordered_json parseJson(const std::string& text);

// A JSON value as the text that --set takes: "12.5", "on", "30%,50%". Throws Failure (usage) that
// names the value's owner.
[[nodiscard]] std::string plainText(const nlohmann::ordered_json& value, std::string_view name);

}  // namespace tool
