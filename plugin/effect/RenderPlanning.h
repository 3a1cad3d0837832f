// What both render roads need to know of the host before a frame is drawn.
#pragma once

#include "hostapi/hostapi.h"

namespace streakfall {

// Grows `destination` so that it holds `source` too. A rectangle is empty when left >= right or
// top >= bottom: an empty destination becomes a copy of the source, whatever that is; an empty
// source adds nothing to a destination that is not.
void UnionRect(const PF_LRect& source, PF_LRect& destination);

// The pixel format of a world, from the host's world suite; by the world's depth flag on an older
// host, which knows no float worlds. Returns the host's code.
[[nodiscard]] PF_Err QueryPixelFormat(const PF_InData* inData, const PF_EffectWorld* world,
                                      PF_PixelFormat& format);

}  // namespace streakfall
