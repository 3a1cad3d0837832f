// RenderContext: one render's inputs.
//
// On the legacy road a local of the command. On the smart road the pre-render makes it, with the
// parameter values of that moment, the host owns it, and the render completes it.
#pragma once

#include "hostapi/hostapi.h"
#include "params/EffectParams.h"

namespace streakfall {

struct RenderContext {
    EffectParams effectParams;  // raw, as the host gives them
    PF_InData* inData = nullptr;
    PF_OutData* outData = nullptr;
    PF_EffectWorld* inputWorld = nullptr;
    PF_EffectWorld* outputWorld = nullptr;
    PF_PixelFormat pixelFormat = PF_PixelFormat_INVALID;  // until the frame's format is known
};

}  // namespace streakfall
