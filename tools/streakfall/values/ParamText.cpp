#include "ParamText.h"

#include <fmt/format.h>

#include "ParamValue.h"

namespace tool {

bool hasRange(const standin::ParamInfo& param) {
    return param.type == PF_Param_FLOAT_SLIDER || param.type == PF_Param_SLIDER;
}

std::string rangeText(double least, double most) { return fmt::format("{} to {}", least, most); }

std::string defaultText(const standin::ParamInfo& param) {
    const auto& part = param.defaultValue.part;
    if (param.type == PF_Param_POINT) return fmt::format("{}%,{}%", part[0], part[1]);
    return valueText(param, param.defaultValue);
}

}  // namespace tool
