#include "params/ParamKinds.h"

#include <string>

#include "params/Numbers.h"
#include "params/Settings.h"

namespace streakfall {

namespace {

// The starting value: the stored one where there is a file, else the built-in default.

std::int32_t startingInteger(const char* key, std::int32_t builtIn, const char* path) {
    return path != nullptr ? storedInteger(key, builtIn, path) : builtIn;
}

double startingNumber(const char* key, double builtIn, const char* path) {
    return path != nullptr ? storedNumber(key, builtIn, path) : builtIn;
}

std::string channelKey(const char* name, const char* suffix) {
    return std::string(name).append(suffix);
}

A_u_char lowByte(std::int32_t value) { return static_cast<A_u_char>(value & 0xFF); }

}  // namespace

PF_Err ParamAddColor::addToHost(const PF_InData* inData, std::int32_t id,
                                const char* settingsPath) const {
    // Alpha is stored with the others and never read: the host does not use it.
    const auto channel = [&](const char* suffix, A_u_char builtIn) {
        return lowByte(startingInteger(channelKey(name(), suffix).c_str(), builtIn, settingsPath));
    };
    PF_ParamDef def = definitionFor(inData, PF_Param_COLOR, id);
    PF_Pixel& value = def.u.cd.value;
    value.alpha = PF_MAX_CHAN8;
    value.red = channel(".r", default_.red);
    value.green = channel(".g", default_.green);
    value.blue = channel(".b", default_.blue);
    def.u.cd.dephault = value;
    return append(inData, def);
}

void ParamAddColor::saveDefault(const PF_ParamDef& def, const char* settingsPath) const {
    if (settingsPath == nullptr) return;
    const PF_Pixel& value = def.u.cd.value;
    storeInteger(channelKey(name(), ".r").c_str(), value.red, settingsPath);
    storeInteger(channelKey(name(), ".g").c_str(), value.green, settingsPath);
    storeInteger(channelKey(name(), ".b").c_str(), value.blue, settingsPath);
    storeInteger(channelKey(name(), ".a").c_str(), value.alpha, settingsPath);
}

PF_Err ParamAddSlider::addToHost(const PF_InData* inData, std::int32_t id,
                                 const char* settingsPath) const {
    const std::int32_t start = startingInteger(name(), values_.value, settingsPath);
    PF_ParamDef def = definitionFor(inData, PF_Param_SLIDER, id);
    PF_SliderDef& slider = def.u.sd;
    slider.value = start;
    slider.dephault = start;
    slider.value_str[0] = '\0';
    slider.value_desc[0] = '\0';
    slider.valid_min = values_.validMin;
    slider.valid_max = values_.validMax;
    slider.slider_min = values_.sliderMin;
    slider.slider_max = values_.sliderMax;
    return append(inData, def);
}

void ParamAddSlider::saveDefault(const PF_ParamDef& def, const char* settingsPath) const {
    if (settingsPath != nullptr) storeInteger(name(), def.u.sd.value, settingsPath);
}

PF_Err ParamAddFloatSlider::addToHost(const PF_InData* inData, std::int32_t id,
                                      const char* settingsPath) const {
    constexpr float kCurveTolerance = 0.05F;
    const float start = narrowed(startingNumber(name(), values_.value, settingsPath));
    PF_ParamDef def = definitionFor(inData, PF_Param_FLOAT_SLIDER, id);
    PF_FloatSliderDef& slider = def.u.fs_d;
    slider.value = start;  // the default widened again, also where the file holds more digits
    slider.dephault = start;
    slider.valid_min = values_.validMin;
    slider.valid_max = values_.validMax;
    slider.slider_min = values_.sliderMin;
    slider.slider_max = values_.sliderMax;
    slider.precision = values_.precision;
    slider.display_flags = values_.displayFlags;
    slider.curve_tolerance = kCurveTolerance;
    if (values_.phase) slider.fs_flags |= PF_FSliderFlag_WANT_PHASE;
    return append(inData, def);
}

void ParamAddFloatSlider::saveDefault(const PF_ParamDef& def, const char* settingsPath) const {
    if (settingsPath != nullptr) storeNumber(name(), def.u.fs_d.value, settingsPath);
}

PF_Err ParamAddCheckbox::addToHost(const PF_InData* inData, std::int32_t id,
                                   const char* settingsPath) const {
    const auto start =
        static_cast<PF_Boolean>(lowByte(startingInteger(name(), values_.value, settingsPath)));
    PF_ParamDef def = definitionFor(inData, PF_Param_CHECKBOX, id);
    def.u.bd.value = start;
    def.u.bd.dephault = start;
    def.u.bd.u.nameptr = values_.text;
    def.flags |= values_.flags;
    return append(inData, def);
}

void ParamAddCheckbox::saveDefault(const PF_ParamDef& def, const char* settingsPath) const {
    if (settingsPath != nullptr) storeInteger(name(), def.u.bd.value, settingsPath);
}

ParamAddAngle::ParamAddAngle(RecordPlace place, const char* name, double degrees,
                             const PF_ParamDef& definition)
    : BaseParam(place, name, definition),
      default_(static_cast<PF_Fixed>(degrees * 65536.0 + (degrees < 0 ? -0.5 : 0.5))) {}

PF_Err ParamAddAngle::addToHost(const PF_InData* inData, std::int32_t id,
                                const char* settingsPath) const {
    const double degrees = startingNumber(name(), fixedToDegrees(default_), settingsPath);
    PF_ParamDef def = definitionFor(inData, PF_Param_ANGLE, id);
    def.u.ad.value = degreesToFixed(degrees);
    def.u.ad.dephault = def.u.ad.value;
    return append(inData, def);
}

void ParamAddAngle::saveDefault(const PF_ParamDef& def, const char* settingsPath) const {
    if (settingsPath != nullptr) {
        storeNumber(name(), fixedToDegrees(def.u.ad.value), settingsPath);
    }
}

PF_Err ParamAddPoint::addToHost(const PF_InData* inData, std::int32_t id, const char*) const {
    constexpr std::int32_t kWholePart = ~0xFFFF;
    PF_ParamDef def = definitionFor(inData, PF_Param_POINT, id);
    PF_PointDef& point = def.u.td;
    point.x_value = point.x_dephault = values_.x & kWholePart;
    point.y_value = point.y_dephault = values_.y & kWholePart;
    point.restrict_bounds = values_.restrictBounds;
    return append(inData, def);
}

PF_Err ParamAddTopic::addToHost(const PF_InData* inData, std::int32_t id, const char*) const {
    PF_ParamDef def = definitionFor(inData, PF_Param_GROUP_START, id);
    return append(inData, def);
}

PF_Err ParamEndTopic::addToHost(const PF_InData* inData, std::int32_t id, const char*) const {
    PF_ParamDef def = definitionFor(inData, PF_Param_GROUP_END, id);
    return append(inData, def);
}

}  // namespace streakfall
