#include "host/ParamInfo.h"

#include <cstring>

namespace standin {
namespace {

constexpr double kFixedOne = 65536.0;

void takeRanges(ParamInfo& info, double validMin, double validMax, double sliderMin,
                double sliderMax) {
    info.validMin = validMin;
    info.validMax = validMax;
    info.sliderMin = sliderMin;
    info.sliderMax = sliderMax;
}

}  // namespace

bool ParamInfo::hasValue() const {
    return type != PF_Param_GROUP_START && type != PF_Param_GROUP_END;
}

bool ParamInfo::steps() const {
    return type == PF_Param_CHECKBOX || (flags & PF_ParamFlag_CANNOT_INTERP) != 0;
}

std::string_view kindName(PF_ParamType type) {
    switch (type) {
        case PF_Param_SLIDER:
            return "slider";
        case PF_Param_ANGLE:
            return "angle";
        case PF_Param_CHECKBOX:
            return "checkbox";
        case PF_Param_COLOR:
            return "color";
        case PF_Param_POINT:
            return "point";
        case PF_Param_FLOAT_SLIDER:
            return "float slider";
        case PF_Param_GROUP_START:
            return "group start";
        case PF_Param_GROUP_END:
            return "group end";
        default:
            return "unknown kind";
    }
}

ParamInfo describe(const PF_ParamDef& definition) {
    ParamInfo info;
    info.id = definition.uu.id;
    info.type = definition.param_type;
    info.name.assign(definition.name, strnlen(definition.name, sizeof definition.name));
    info.flags = definition.flags;
    info.uiFlags = definition.ui_flags;
    info.definition = definition;

    switch (definition.param_type) {
        case PF_Param_SLIDER: {
            const PF_SliderDef& slider = definition.u.sd;
            takeRanges(info, slider.valid_min, slider.valid_max, slider.slider_min,
                       slider.slider_max);
            info.defaultValue = Value::number(slider.dephault);
            break;
        }
        case PF_Param_FLOAT_SLIDER: {
            const PF_FloatSliderDef& slider = definition.u.fs_d;
            takeRanges(info, double{slider.valid_min}, double{slider.valid_max},
                       double{slider.slider_min}, double{slider.slider_max});
            info.precision = slider.precision;
            info.display = slider.display_flags;
            info.defaultValue = Value::number(double{slider.dephault});
            break;
        }
        case PF_Param_ANGLE:
            info.defaultValue = Value::number(definition.u.ad.dephault / kFixedOne);
            break;
        case PF_Param_CHECKBOX:
            takeRanges(info, 0, 1, 0, 1);
            info.defaultValue = Value::number(definition.u.bd.dephault != 0);
            break;
        case PF_Param_COLOR: {
            const PF_Pixel& color = definition.u.cd.dephault;
            info.defaultValue = Value::color(color.red, color.green, color.blue, color.alpha);
            break;
        }
        case PF_Param_POINT:
            info.defaultValue = Value::point(definition.u.td.x_dephault / kFixedOne,
                                             definition.u.td.y_dephault / kFixedOne);
            break;
        default:
            break;
    }
    return info;
}

}  // namespace standin
