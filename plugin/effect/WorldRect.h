#pragma once

#include "hostapi/hostapi.h"

namespace streakfall {

// A world from corner to corner. Its sides pass through 16 bits, signed, as the host's own
// rectangles of pictures do; a world has at most 30000 pixels a side.
inline PF_Rect wholeOf(const PF_EffectWorld& world) {
    return {0, 0, static_cast<A_short>(world.width), static_cast<A_short>(world.height)};
}

}  // namespace streakfall
