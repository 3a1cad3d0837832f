// The options dialog: makes the current values the defaults of new instances, or brings the
// built-in defaults back.
#pragma once

#include "hostapi/hostapi.h"

namespace streakfall {

// PF_Cmd_DO_DIALOG. Modal: returns when the dialog is closed. A file that cannot be written or
// removed is not reported.
void DoDialog(const PF_InData* inData, PF_ParamDef* const* params);

}  // namespace streakfall
