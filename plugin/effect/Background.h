// What the lines are laid over: the first thing that a render writes.
#pragma once

#include "effect/RenderContext.h"

namespace streakfall {

// Clears the output or copies the input into it, as "Clear Background" says. Returns the host's
// code.
[[nodiscard]] PF_Err layBackground(const RenderContext& context);

}  // namespace streakfall
