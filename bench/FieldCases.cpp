#include "FieldCases.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>
#include <string>

#include "params/ParamRows.h"

namespace bench {
namespace {

using streakfall::EffectParams;
using streakfall::ParamRow;

template <class T>
void put(EffectParams& params, const ParamRow& row, T value) {
    std::memcpy(reinterpret_cast<char*>(&params) + row.place.offset, &value, sizeof value);
}

constexpr double kFixedOne = 65536.0;

void store(EffectParams& params, const ParamRow& row, double value) {
    switch (row.type) {
        case PF_Param_FLOAT_SLIDER:
            return put(params, row, value);
        case PF_Param_SLIDER:
            return put(params, row, static_cast<std::int32_t>(value));
        case PF_Param_CHECKBOX:
            return put(params, row, static_cast<std::uint8_t>(value));
        case PF_Param_ANGLE:
            return put(params, row, static_cast<PF_Fixed>(value * kFixedOne));
        default:
            return;
    }
}

streakfall::FixedPoint percentOf(const FrameSize& size, const ParamRow& row) {
    return {static_cast<PF_Fixed>(row.x / 100.0 * size.width * kFixedOne),
            static_cast<PF_Fixed>(row.y / 100.0 * size.height * kFixedOne)};
}

}  // namespace

const std::vector<FieldCase>& fieldCases() {
    static const std::vector<FieldCase> cases{
        {"plain", {}},
        {"grouped",
         {{"Group Lines", 20},
          {"Lines Random", 10},
          {"Attraction", 60},
          {"Interval Random", 100},
          {"Group Offset Random", 30}}},
        {"repeated", {{"Repeat", 1}, {"Repeat Interval", 100}, {"Random Repeat Num", 10}}},
        {"fanned", {{"Enable Taper", 1}, {"Taper", 60}, {"Base Length", 500}}}};
    return cases;
}

streakfall::FrameInfo frameInfo(const FrameSize& size) {
    streakfall::FrameInfo info;
    info.width = size.width;
    info.height = size.height;
    return info;
}

EffectParams defaultParams(const FrameSize& size) {
    EffectParams params;
    for (const ParamRow& row : streakfall::kParamRows) {
        if (row.type == PF_Param_POINT) put(params, row, percentOf(size, row));
        store(params, row, row.x);
    }
    return params;
}

streakfall::ConvertedParams paramsOf(const FieldCase& field, const FrameSize& size) {
    EffectParams params = defaultParams(size);
    for (const FieldCase::Setting& setting : field.settings) {
        const auto row = std::ranges::find_if(streakfall::kParamRows, [&](const ParamRow& r) {
            return std::strcmp(r.name, setting.name) == 0;
        });
        if (row == streakfall::kParamRows.end()) {
            throw std::logic_error(std::string("no parameter is named ") + setting.name);
        }
        store(params, *row, setting.value);
    }
    return streakfall::convertParams(params, frameInfo(size));
}

}  // namespace bench
