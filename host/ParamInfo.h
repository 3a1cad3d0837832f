#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/Keyframes.h"
#include "hostapi/hostapi.h"

namespace standin {

// One parameter as the effect added it. A value.
struct ParamInfo {
    A_long index = 0;  // the host's; 0 is the input layer and stands in no list
    A_long id = 0;
    PF_ParamType type = PF_Param_RESERVED;
    std::string name;
    std::string group;  // name of the innermost group around it, empty at the top
    PF_ParamFlags flags = 0;
    PF_ParamUIFlags uiFlags = 0;
    PF_ParamDef definition{};  // as it came

    // Kinds with numbers; for others all 0.
    double validMin = 0, validMax = 0;
    double sliderMin = 0, sliderMax = 0;
    PF_Precision precision = 0;
    PF_ValueDisplayFlags display = 0;

    // A point's default is in percent of the layer, x then y.
    Value defaultValue;

    bool hasValue() const;  // false for groups' starts and ends
    bool isWhole() const { return type == PF_Param_SLIDER || type == PF_Param_CHECKBOX; }
    bool steps() const;  // the host must not interpolate it
    bool supervised() const { return (flags & PF_ParamFlag_SUPERVISE) != 0; }
};

// "slider", "float slider", "checkbox", "color", "point", "angle", "group start", "group end".
std::string_view kindName(PF_ParamType type);

// Reads what a definition says of itself. Index and group are the caller's.
ParamInfo describe(const PF_ParamDef& definition);

}  // namespace standin
