#include "host/Definitions.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace standin {
namespace {

constexpr double kFixedOne = 65536.0;

A_long nearestLong(double value) {
    return static_cast<A_long>(
        std::lround(std::clamp(value, double{std::numeric_limits<A_long>::min()},
                               double{std::numeric_limits<A_long>::max()})));
}

A_u_char nearestByte(double value) {
    return static_cast<A_u_char>(std::lround(std::clamp(value, 0.0, double{PF_MAX_CHAN8})));
}

PF_Fixed scaledFixed(double pixels, const PF_RationalScale& scale) {
    return nearestLong(pixels * kFixedOne * scale.num / scale.den);
}

double unscaled(PF_Fixed fixed, const PF_RationalScale& scale) {
    return fixed / kFixedOne * scale.den / scale.num;
}

}  // namespace

void putValue(PF_ParamDef& definition, const Value& value, const PixelScale& scale) {
    const auto& part = value.part;
    switch (definition.param_type) {
        case PF_Param_SLIDER:
            definition.u.sd.value = nearestLong(part[0]);
            break;
        case PF_Param_FLOAT_SLIDER:
            definition.u.fs_d.value = part[0];
            break;
        case PF_Param_ANGLE:
            definition.u.ad.value = nearestLong(part[0] * kFixedOne);
            break;
        case PF_Param_CHECKBOX:
            definition.u.bd.value = part[0] != 0;
            break;
        case PF_Param_COLOR:
            definition.u.cd.value = {nearestByte(part[0]), nearestByte(part[1]),
                                     nearestByte(part[2]), nearestByte(part[3])};
            break;
        case PF_Param_POINT:
            definition.u.td.x_value = scaledFixed(part[0], scale.x);
            definition.u.td.y_value = scaledFixed(part[1], scale.y);
            break;
        default:
            break;
    }
}

Value takeValue(const PF_ParamDef& definition, const PixelScale& scale) {
    switch (definition.param_type) {
        case PF_Param_SLIDER:
            return Value::number(definition.u.sd.value);
        case PF_Param_FLOAT_SLIDER:
            return Value::number(definition.u.fs_d.value);
        case PF_Param_ANGLE:
            return Value::number(definition.u.ad.value / kFixedOne);
        case PF_Param_CHECKBOX:
            return Value::number(definition.u.bd.value);
        case PF_Param_COLOR: {
            const PF_Pixel& color = definition.u.cd.value;
            return Value::color(color.red, color.green, color.blue, color.alpha);
        }
        case PF_Param_POINT:
            return Value::point(unscaled(definition.u.td.x_value, scale.x),
                                unscaled(definition.u.td.y_value, scale.y));
        default:
            return {};
    }
}

}  // namespace standin
