// What the panel does while the user works: controls without effect are greyed, and "End Point"
// follows "Start Point" when the link is on.
//
// Both serve one host command each, on the host's calling thread, with that command's records, and
// return 0. A suite that the host lacks ends them with the missing suite's number.
#pragma once

#include "hostapi/hostapi.h"

namespace streakfall {

// PF_Cmd_UPDATE_PARAMS_UI. Sends every control's state to the panel, whether it changed or not,
// and takes down where "Start Point" is. `params` is only read. On a host without a user interface
// every control is disabled instead.
[[nodiscard]] PF_Err updateParamsUI(const PF_InData* inData, const PF_OutData* outData,
                                    PF_ParamDef* const* params);

// PF_Cmd_USER_CHANGED_PARAM, which comes for "Start Point" alone. Moves "End Point" in `params` by
// as much as "Start Point" has moved since the panel was last updated.
[[nodiscard]] PF_Err userChangedParam(const PF_InData* inData, PF_ParamDef* const* params,
                                      const PF_UserChangedParamExtra* extra);

}  // namespace streakfall
