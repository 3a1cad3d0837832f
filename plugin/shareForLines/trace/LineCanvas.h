// LineCanvas: what strokes paint through. A view of the line buffer, the scratch state of the dab
// being drawn, and the host's records for the frame flow.
//
// Owner: the frame flow, one a render. Drawing does not read the host's records: a test paints into
// a plain array by filling in pixels, rowBytes, width and height.
#pragma once

#include "hostapi/hostapi.h"
#include "share/util/EffectWorldPtr.h"
#include "shareForLines/plain/DabCanvas.h"

namespace streakfall {

struct LineCanvas : DabCanvas {
    PF_InData* inData = nullptr;
    PF_OutData* outData = nullptr;
    PF_EffectWorld* world = nullptr;  // null is legal: nothing is drawn then
    AEUtil::EffectWorldPtr worldRef;

    LineCanvas() = default;
    // Views `lineWorld` and keeps the world of `ref` alive.
    LineCanvas(PF_InData* in, PF_OutData* out, PF_EffectWorld* lineWorld,
               const AEUtil::EffectWorldPtr& ref)
        : inData(in), outData(out), world(lineWorld), worldRef(ref) {
        if (world == nullptr) return;
        pixels = world->data;
        rowBytes = world->rowbytes;
        width = world->width;
        height = world->height;
    }
};

}  // namespace streakfall
