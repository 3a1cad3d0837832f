// LineCanvas: what strokes paint through. A view of the line buffer plus the scratch state of the
// dab being drawn.
//
// Owner: the frame flow, one a render. Drawing does not know the host: a test paints into a plain
// array by filling in pixels, rowBytes, width and height. One dab at a time, one thread.
#pragma once

#include <cstddef>
#include <cstdint>

#include "hostapi/hostapi.h"
#include "share/util/EffectWorldPtr.h"
#include "shareForLines/CoverageTable.h"
#include "shareForLines/OpenPixels.h"
#include "shareForLines/SpanTable.h"
#include "shareForLines/WhatShowsAvx2.h"

namespace streakfall {

struct LineCanvas {
    PF_InData* inData = nullptr;  // for the frame flow; drawing does not read them
    PF_OutData* outData = nullptr;
    PF_EffectWorld* world = nullptr;  // null is legal: nothing is drawn then
    void* pixels = nullptr;           // pixel (0, 0)
    std::int32_t rowBytes = 0;        // may exceed width pixels
    std::int32_t width = 0;           // pixels
    std::int32_t height = 0;
    SpanTable spans;
    WhatShows shows;
    OpenPixels open;
    CoverageBlend weights;
    bool hollowDabs = false;  // a dab may leave its middle to the dabs behind it
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

    // First pixel of row y, 0 <= y < height.
    template <class Depth>
    typename Depth::Pixel* row(std::int32_t y) const {
        return reinterpret_cast<typename Depth::Pixel*>(static_cast<unsigned char*>(pixels) +
                                                        static_cast<std::ptrdiff_t>(rowBytes) * y);
    }
};

}  // namespace streakfall
