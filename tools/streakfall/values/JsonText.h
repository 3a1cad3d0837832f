// Reading JSON that a person wrote: a byte-order mark is read over, and what is wrong is told with
// its place.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

namespace tool {

// Throws Failure (usage): line and column of what is no JSON, the name of a key that is given twice
// in one object or whose number does not fit a double.
[[nodiscard]] nlohmann::ordered_json parseJson(const std::string& text);

}  // namespace tool
