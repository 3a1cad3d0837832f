// The flow of one frame, from a filled context to the finished output. One body of code in three
// depths; the caller picks by the frame's pixel format.
//
// Needs all of the context: both of the host's records and both worlds. Changes nothing in it.
// Returns a host error code: that of the background, of a stop by the host, or of the final
// compositing. Throws what the line buffer or the stroke's shapes fail with; everything made so
// far is released on the way out.
#pragma once

#include "effect/RenderContext.h"

namespace streakfall {

[[nodiscard]] PF_Err RenderFrame8(const RenderContext& context);
[[nodiscard]] PF_Err RenderFrame16(const RenderContext& context);
[[nodiscard]] PF_Err RenderFrameFloat(const RenderContext& context);

}  // namespace streakfall
