// Two questions about the host that the whole of parameters and settings asks.
#pragma once

#include "hostapi/hostapi.h"

namespace streakfall {

// Whether the host runs without a user interface. Only After Effects is asked, through its
// application suite; throws the missing suite's number when it has none.
bool isRenderEngine(const PF_InData* inData);

// Whether the host is After Effects of interface version below 12.12. Such a host gets nothing of
// the settings file.
bool isOldHost(const PF_InData* inData);

}  // namespace streakfall
