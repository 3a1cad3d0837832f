// What the effect announces to a host: at global setup, and before any call in the property list.
#pragma once

#include "hostapi/hostapi.h"
#include "params/ProductVersion.h"

namespace streakfall {

inline constexpr PF_OutFlags kOutFlags =
    PF_OutFlag_WIDE_TIME_INPUT | PF_OutFlag_SEQUENCE_DATA_NEEDS_FLATTENING |
    PF_OutFlag_I_DO_DIALOG | PF_OutFlag_USE_OUTPUT_EXTENT | PF_OutFlag_DEEP_COLOR_AWARE |
    PF_OutFlag_SEND_UPDATE_PARAMS_UI;

inline constexpr PF_OutFlags2 kOutFlags2 =
    PF_OutFlag2_SUPPORTS_QUERY_DYNAMIC_FLAGS | PF_OutFlag2_PARAM_GROUP_START_COLLAPSED_FLAG |
    PF_OutFlag2_I_AM_THREADSAFE | PF_OutFlag2_SUPPORTS_SMART_RENDER | PF_OutFlag2_FLOAT_COLOR_AWARE;

}  // namespace streakfall
