// The process-wide state of the module: the global suites, the pending errors, the parameter
// table and the one effect object. Not initialised, or running; any first call brings it up, the
// host's global setdown takes it down, and the call after that brings it up anew.
//
// Bringing up and taking down exclude each other. The host sends no other command while it takes
// the effect down.
#pragma once

#include "effect/BaseFilter.h"

namespace streakfall {

// Does nothing when the state stands. 4 when there is no memory for it because the host offers
// none; any other failure comes as an exception. A failure leaves nothing standing.
[[nodiscard]] PF_Err initialiseOnce(const PF_InData* inData);

// The suites go last: giving memory back needs them.
void shutDown();

// Null when the state does not stand.
BaseFilter* effectObject() noexcept;

}  // namespace streakfall
