#pragma once

#include "host/Image.h"
#include "hostapi/hostapi.h"

namespace standin {

// Straight colour laid in front of straight colour, through a mask's alpha. With everything as a
// ratio of white, for source s, destination d, mask alpha m and opacity o:
//
//     a      = s.alpha * m * o
//     alpha  = a + d.alpha * (1 - a)
//     colour = (s.colour * a + d.colour * d.alpha * (1 - a)) / alpha
//
// rounded to the nearest value of the depth. Where a is 0 the destination keeps its bytes.
struct TransferJob {
    const PF_EffectWorld& source;
    PF_LRect sourceRect;
    A_long destX, destY;         // where the rectangle's left top goes
    const PF_EffectWorld* mask;  // null: no mask; beyond its edges it is transparent
    PF_Point maskOffset;         // of the mask's left top, in the source's pixels
    A_u_char opacity;
    A_u_short opacitySu;  // of 16-bit and float worlds
    PF_EffectWorld& destination;
};

// All worlds are of that depth. What lies outside of source or destination is cut off.
void transferInFront(const TransferJob& job, Depth depth);

}  // namespace standin
