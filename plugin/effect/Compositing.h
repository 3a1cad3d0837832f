// The last step of a frame: the only moment at which lines reach the output.
#pragma once

#include "effect/RenderContext.h"

namespace streakfall {

// Lays the line buffer over the output, in front, at full opacity. The input's alpha is the mask:
// where the input is transparent no line shows. Returns the host's code.
[[nodiscard]] PF_Err layLinesOverOutput(const RenderContext& context,
                                        const PF_EffectWorld& lineBuffer);

}  // namespace streakfall
