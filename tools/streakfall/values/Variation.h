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

// True for the kind of parameter that farApart is for.
[[nodiscard]] bool isSeed(const standin::ParamInfo& param);

// Places from + 1 to from + count of an endless list of whole numbers all over a seed's range, of
// which no two near each other in the list come near each other in the range.
[[nodiscard]] std::vector<double> farApart(const standin::ParamInfo& seed, int from, int count);

// Throws Failure (usage) that names the text.
[[nodiscard]] Variation parseVariation(const ParamLookup& lookup, std::string_view text);

}  // namespace tool
