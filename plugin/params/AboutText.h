// The text of PF_Cmd_ABOUT.
#pragma once

#include "hostapi/hostapi.h"

namespace streakfall {

// Puts name, version and rights line into return_msg of out_data; with the Shift key down also the
// build.
[[nodiscard]] PF_Err about(const PF_InData* inData, PF_OutData* outData);

}  // namespace streakfall
