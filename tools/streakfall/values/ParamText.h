// What the host knows of a parameter, as text: for tables and lists.
#pragma once

#include <string>

#include "host/ParamInfo.h"

namespace tool {

// True for the kinds that have a valid and a slider range.
[[nodiscard]] bool hasRange(const standin::ParamInfo& param);

// "0 to 100".
[[nodiscard]] std::string rangeText(double least, double most);

// The default as --set takes it; empty for groups.
[[nodiscard]] std::string defaultText(const standin::ParamInfo& param);

}  // namespace tool
