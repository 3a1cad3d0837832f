#include "validate/RandomValues.h"

#include <cmath>
#include <limits>

#include "validate/Report.h"

namespace validate {
namespace {

using namespace standin;

double numberPast(Random& random) {
    using Limits = std::numeric_limits<double>;
    static constexpr double kOdd[] = {
        Limits::quiet_NaN(),
        Limits::infinity(),
        -Limits::infinity(),
        Limits::max(),
        Limits::lowest(),
        Limits::min(),
        Limits::denorm_min(),
        -0.0,
        0x1p31,
        -0x1p31,
        0x1p63,
        1e-7,
    };
    if (random.oneIn(2)) return random.oneOf(std::span<const double>(kOdd));
    return random.real(-1, 1) * std::pow(10, random.between(0, 9));
}

double numberInside(const ParamInfo& param, Random& random) {
    if (param.type == PF_Param_CHECKBOX) return random.below(2);
    switch (random.below(16)) {
        case 0:
            return param.validMin;
        case 1:
            return param.validMax;
        case 2:
        case 3:
            return random.real(param.validMin, param.validMax);
        default:
            return random.real(param.sliderMin, param.sliderMax);
    }
}

// Layer pixels; a point may lie outside, and 16.16 numbers end at 32768.
double coordinate(A_long side, Random& random, Reach reach) {
    if (reach == Reach::past && random.oneIn(4)) return random.oneIn(2) ? -32768 : 32767.99;
    return random.real(-0.5, 1.5) * side;
}

Value randomValue(const ParamInfo& param, LayerSize layer, Random& random, Reach reach) {
    switch (param.type) {
        case PF_Param_POINT:
            return Value::point(coordinate(layer.width, random, reach),
                                coordinate(layer.height, random, reach));
        case PF_Param_COLOR:
            return Value::color(random.below(256), random.below(256), random.below(256));
        case PF_Param_ANGLE:
            return Value::number(random.real(-720, 720));
        case PF_Param_SLIDER:
            if (reach == Reach::past && random.oneIn(4)) {
                return Value::number(random.oneIn(2) ? -0x1p31 : 0x1p31 - 1);
            }
            return Value::number(static_cast<int>(numberInside(param, random)));
        default:
            if (reach == Reach::past && param.type == PF_Param_FLOAT_SLIDER && random.oneIn(4)) {
                return Value::number(numberPast(random));
            }
            return Value::number(numberInside(param, random));
    }
}

}  // namespace

void storeRandomValues(Instance& instance, Random& random, Reach reach) {
    instance.storeDefaults();
    const int share = random.between(2, 5);
    for (const ParamInfo& param : instance.host().params()) {
        if (param.hasValue() && random.oneIn(share)) {
            instance.storeValue(param.id, randomValue(param, instance.layer(), random, reach));
        }
    }
}

std::string describeValues(const Instance& instance, const Host& host) {
    std::string words;
    for (const ParamInfo& param : host.params()) {
        if (!param.hasValue()) continue;
        const Value value = instance.value(param.id);
        if (value == param.defaultValue) continue;
        words += text(words.empty() ? "" : ", ", param.name, "=", value.part[0]);
        if (param.type == PF_Param_POINT || param.type == PF_Param_COLOR) {
            words += text("/", value.part[1]);
        }
    }
    return words;
}

}  // namespace validate
