// One parameter through several values, as `sheet --vary` is told it:
//
//   Random Seed=1..12        whole numbers, both ends included
//   Taper=0..100:25          0, 25, 50, 75, 100
//   Thickness=2,5,12.5       a list; with semicolons where a value has commas of its own
//   Random Seed=12 throws    a seed's range, taken in twelve places far apart
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "ParamLookup.h"

namespace tool {

inline constexpr int kMostTiles = 400;  // of a sheet

struct Variation {
    const standin::ParamInfo* param;
    std::vector<std::string> values;  // as --set takes them; one at least
};

// Throws Failure (usage) that names the text.
[[nodiscard]] Variation parseVariation(const ParamLookup& lookup, std::string_view text);

}  // namespace tool
