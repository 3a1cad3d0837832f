// A parameter's definition, which the effect hands over when it adds the parameter and gets back,
// with the value at a time, when it checks the parameter out.
#pragma once

#include "hostapi/records.h"

struct PF_SliderDef {
    PF_ParamValue value;
    A_char value_str[32];
    A_char value_desc[32];
    A_long valid_min, valid_max;
    A_long slider_min, slider_max;
    A_long dephault;
};

struct PF_FloatSliderDef {
    A_FpLong value;
    A_FpLong phase;
    A_char value_desc[32];
    A_FpShort valid_min, valid_max;
    A_FpShort slider_min, slider_max;
    A_FpShort dephault;
    PF_Precision precision;
    PF_ValueDisplayFlags display_flags;
    PF_FSliderFlags fs_flags;
    A_FpShort curve_tolerance;
    PF_Boolean useExponent;
    A_FpShort exponent;
};

struct PF_CheckBoxDef {
    PF_ParamValue value;
    PF_Boolean dephault;
    A_char reserved;
    A_short reserved1;
    union {
        const A_char* nameptr;
    } u;
};

struct PF_ColorDef {
    PF_Pixel value;
    PF_Pixel dephault;
};

struct PF_PointDef {
    PF_Fixed x_value, y_value;
    A_char reserved[3];
    PF_Boolean restrict_bounds;
    PF_Fixed x_dephault, y_dephault;
};

// Degrees.
struct PF_AngleDef {
    PF_Fixed value;
    PF_Fixed dephault;
    PF_Fixed valid_min, valid_max;
};

union PF_ParamDefUnion {
    PF_LayerDef ld;
    PF_SliderDef sd;
    PF_AngleDef ad;
    PF_CheckBoxDef bd;
    PF_ColorDef cd;
    PF_PointDef td;
    PF_FloatSliderDef fs_d;
};

struct PF_ParamDef {
    union {
        A_long id;
        PF_ChangeFlags change_flags;
    } uu;
    PF_ParamUIFlags ui_flags;
    A_short ui_width;
    A_short ui_height;
    PF_ParamType param_type;
    A_char name[32];  // at most 31 characters and a zero
    PF_ParamFlags flags;
    A_long unused;
    PF_ParamDefUnion u;
};

struct PF_UserChangedParamExtra {
    PF_ParamIndex param_index;
};
