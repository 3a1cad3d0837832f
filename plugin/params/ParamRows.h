// The effect's parameters: one table, from which the objects, the settings keys, the panel's rules
// and the record's layout all derive.
//
// The order of the rows is the order in the host's panel and gives the host index, from 1; index 0
// is the effect's input layer. The id is the number under which projects store a parameter's
// values: an id is never changed and never given to something else. The name is both what the
// panel shows and the key in the settings file, exact to the character: the group "Taper " ends in
// a blank, the slider "Taper" does not.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "params/EffectParams.h"

namespace streakfall {

// Ids lie below this.
inline constexpr std::size_t kParamIdLimit = 256;

// Where a value goes in EffectParams, in bytes. Size 0: the parameter has no value at all.
struct RecordPlace {
    std::int32_t offset = 0;
    std::int32_t size = 0;
};

// Both ends belong to it.
struct Range {
    double min = 0, max = 0;
};

// What a value counts; a frame's conversion follows from it.
enum class Unit {
    plain,    // taken as it is: numbers, switches, colours, and pixels that never scale
    pixels,   // of the full size
    percent,  // 100 for the whole
    point,    // 16.16 pixels of the frame's own size
    angle,    // 16.16 degrees
};

struct ParamRow {
    std::int32_t id;
    const char* name;
    PF_ParamType type;
    Unit unit = Unit::plain;
    RecordPlace place{};
    Range valid{};   // what the host accepts
    Range slider{};  // the part of it that the control shows
    // The built-in default: a number, 0 or 1, degrees, or percent of the layer (y is for points
    // only). It can lie outside the slider's range.
    double x = 0, y = 0;
    PF_ValueDisplayFlags display = PF_ValueDisplayFlag_NONE;
    PF_ParamFlags flags = 0;  // in addition to those of every parameter

    constexpr ParamRow with(PF_ParamFlags more) const {
        ParamRow row = *this;
        row.flags |= more;
        return row;
    }
    constexpr std::size_t settingsKeys() const {
        switch (type) {
            case PF_Param_COLOR:
                return 4;
            case PF_Param_SLIDER:
            case PF_Param_FLOAT_SLIDER:
            case PF_Param_ANGLE:
            case PF_Param_CHECKBOX:
                return 1;
            default:
                return 0;
        }
    }
};

// How a row of each kind is written.
namespace rows {

inline constexpr bool kOff = false, kOn = true;
inline constexpr Unit kPixels = Unit::pixels, kPlain = Unit::plain;

constexpr ParamRow point(std::int32_t id, const char* name, RecordPlace place, int x, int y) {
    return {.id = id,
            .name = name,
            .type = PF_Param_POINT,
            .unit = Unit::point,
            .place = place,
            .x = static_cast<double>(x),
            .y = static_cast<double>(y)};
}
constexpr ParamRow checkbox(std::int32_t id, const char* name, RecordPlace place, bool on) {
    return {.id = id, .name = name, .type = PF_Param_CHECKBOX, .place = place, .x = on ? 1.0 : 0.0};
}
// Black.
constexpr ParamRow colour(std::int32_t id, const char* name, RecordPlace place) {
    return {.id = id, .name = name, .type = PF_Param_COLOR, .place = place};
}
constexpr ParamRow angle(std::int32_t id, const char* name, RecordPlace place, double degrees) {
    return {.id = id,
            .name = name,
            .type = PF_Param_ANGLE,
            .unit = Unit::angle,
            .place = place,
            .x = degrees};
}
constexpr ParamRow integer(std::int32_t id, const char* name, RecordPlace place, Range valid,
                           Range slider, int value) {
    return {.id = id,
            .name = name,
            .type = PF_Param_SLIDER,
            .place = place,
            .valid = valid,
            .slider = slider,
            .x = static_cast<double>(value)};
}
constexpr ParamRow number(std::int32_t id, const char* name, RecordPlace place, Unit unit,
                          Range valid, Range slider, double value) {
    return {.id = id,
            .name = name,
            .type = PF_Param_FLOAT_SLIDER,
            .unit = unit,
            .place = place,
            .valid = valid,
            .slider = slider,
            .x = value};
}
// Stored as the number shown: 100 for 100 percent.
constexpr ParamRow percent(std::int32_t id, const char* name, RecordPlace place, Range valid,
                           Range slider, double value) {
    ParamRow row = number(id, name, place, Unit::percent, valid, slider, value);
    row.display = PF_ValueDisplayFlag_PERCENT;
    return row;
}
constexpr ParamRow groupStart(std::int32_t id, const char* name) {
    return {.id = id, .name = name, .type = PF_Param_GROUP_START};
}
constexpr ParamRow groupEnd(std::int32_t id) {
    return {.id = id, .name = "", .type = PF_Param_GROUP_END};
}

#define FIELD(field) \
    RecordPlace { offsetof(EffectParams, field), sizeof(EffectParams::field) }

inline constexpr std::array kParamRows{
    // The panel reacts to this one.
    point(2, "Start Point", FIELD(startPoint), 30, 50).with(PF_ParamFlag_SUPERVISE),
    point(3, "End Point", FIELD(endPoint), 70, 50),
    checkbox(4, "Link End Point", FIELD(linkEndPoint), kOff),
    percent(6, "Opacity", FIELD(opacity), {0, 100}, {0, 100}, 100),
    colour(5, "Color", FIELD(color)),
    groupStart(55, "Color Randomize"),
    angle(57, "H", FIELD(colorRandomH), 0),
    percent(58, "S", FIELD(colorRandomS), {0, 100}, {0, 100}, 0),
    percent(59, "V", FIELD(colorRandomV), {0, 100}, {0, 100}, 0),
    groupEnd(56),
    number(11, "Thickness", FIELD(thickness), kPixels, {0, 500}, {0, 50}, 5),
    percent(12, "Thickness Random", FIELD(thicknessRandom), {0, 500}, {0, 100}, 0),
    percent(8, "Offset Random", FIELD(offsetRandom), {0, 200}, {0, 200}, 0),
    number(45, "Length", FIELD(length), kPixels, {-2000, 2000}, {-200, 200}, 500),
    percent(7, "Length Random", FIELD(lengthRandom), {0, 100}, {0, 100}, 0),
    number(9, "Density of Lines", FIELD(densityOfLines), kPlain, {0, 1000}, {0, 200}, 40),
    percent(10, "Density Random", FIELD(densityRandom), {0, 100}, {0, 100}, 0),
    integer(23, "Random Interval", FIELD(randomInterval), {0, 1000}, {0, 60}, 0)
        .with(PF_ParamFlag_CANNOT_INTERP),
    integer(44, "Random Array", FIELD(randomArray), {0, 10}, {0, 10}, 0)
        .with(PF_ParamFlag_CANNOT_INTERP),
    integer(24, "Random Seed", FIELD(randomSeed), {0, 10000}, {0, 100}, 0)
        .with(PF_ParamFlag_CANNOT_INTERP),
    checkbox(22, "Clear Background", FIELD(clearBackground), kOn),
    groupStart(36, "In/Out"),
    checkbox(37, "Enable In/Out", FIELD(enableInOut), kOn),
    percent(38, "Start Thickness", FIELD(startThickness), {0, 100}, {0, 100}, 0),
    percent(39, "Start Length", FIELD(startLength), {0, 100}, {0, 100}, 45),
    percent(40, "End Thickness", FIELD(endThickness), {0, 100}, {0, 100}, 0),
    percent(41, "End Length", FIELD(endLength), {0, 100}, {0, 100}, 45),
    checkbox(51, "Use Start/End Opacity", FIELD(useStartEndOpacity), kOff),
    percent(52, "Start Opacity", FIELD(startOpacity), {0, 100}, {0, 100}, 0),
    percent(53, "End Opacity", FIELD(endOpacity), {0, 100}, {0, 100}, 0),
    percent(54, "Opacity Center Position", FIELD(opacityCenterPosition), {0, 100}, {0, 100}, 50),
    groupEnd(42),
    groupStart(25, "Grouping"),
    percent(26, "Group Lines", FIELD(groupLines), {0, 100}, {0, 10}, 0),
    percent(27, "Lines Random", FIELD(linesRandom), {0, 100}, {0, 10}, 0),
    percent(28, "Attraction", FIELD(attraction), {0, 100}, {0, 100}, 50),
    percent(30, "Interval Random", FIELD(intervalRandom), {0, 5000}, {0, 200}, 0),
    percent(47, "Group Offset Random", FIELD(groupOffsetRandom), {0, 200}, {0, 200}, 0),
    groupEnd(31),
    groupStart(32, "Offset and Repeat"),
    number(21, "Offset", FIELD(offset), kPixels, {-10000, 10000}, {-200, 200}, 0),
    number(33, "Auto Offset", FIELD(autoOffset), kPixels, {-2000, 2000}, {-200, 200}, 0),
    checkbox(18, "Repeat", FIELD(repeat), kOff),
    number(20, "Repeat Interval", FIELD(repeatInterval), kPixels, {0, 10000}, {0, 500}, 0),
    integer(19, "Random Repeat Num", FIELD(randomRepeatNum), {0, 100}, {0, 10}, 0),
    groupEnd(35),
    groupStart(48, "Taper "),
    checkbox(69, "Enable Taper", FIELD(enableTaper), kOn),
    percent(13, "Taper", FIELD(taper), {-100, 100}, {-100, 100}, 0),
    number(50, "Base Length", FIELD(baseLength), kPixels, {0, 2000}, {0, 200}, 200),
    percent(14, "Arch Rate", FIELD(archRate), {1, 200}, {1, 200}, 100),
    checkbox(16, "Fix Band Form", FIELD(fixBandForm), kOff),
    groupEnd(49),
    groupStart(60, "Wave"),
    checkbox(62, "Enable Wave", FIELD(enableWave), kOff),
    number(63, "Wave Amount", FIELD(waveAmount), kPixels, {-1000, 1000}, {-100, 100}, 15),
    number(65, "Wave Length", FIELD(waveLength), kPixels, {1, 1000}, {1, 100}, 50),
    number(67, "Wave Phase", FIELD(wavePhase), kPlain, {-10000, 10000}, {-100, 100}, 0),
    percent(64, "Wave Amount Random", FIELD(waveAmountRandom), {0, 100}, {0, 100}, 0),
    percent(66, "Wave Length Random", FIELD(waveLengthRandom), {0, 100}, {0, 100}, 0),
    number(68, "Wave Phase Random", FIELD(wavePhaseRandom), kPlain, {-10000, 10000}, {-100, 100},
           0),
    groupEnd(61),
};

#undef FIELD

}  // namespace rows

using rows::kParamRows;

inline constexpr std::size_t kParamCount = kParamRows.size();

// The id of the parameter of that name; a name that is not in the table does not compile.
consteval std::int32_t paramIdOf(std::string_view name) {
    for (const ParamRow& row : kParamRows)
        if (name == row.name) return row.id;
    throw "no parameter has this name";
}

}  // namespace streakfall
