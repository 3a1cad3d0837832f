// DabCanvas: the pixels, and the scratch state of the dab being drawn. One dab at a time.
#pragma once

#include "shareForLines/canvas/CanvasView.h"
#include "shareForLines/disc/CoverageTable.h"
#include "shareForLines/disc/SpanTable.h"

namespace streakfall {

struct DabCanvas : CanvasView {
    SpanTable spans;
    CoverageBlend weights;
    bool hollowDabs = false;  // a dab may leave its middle to the dabs behind it
};

}  // namespace streakfall
