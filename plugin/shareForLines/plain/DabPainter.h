// The dab, pixel by pixel: a disc with an anti-aliased edge. Every other way of painting dabs
// must leave the buffer as this one does.
//
// A radius below 5 visits each pixel of the bounding box. A larger one walks only its outline, on
// a centre quantised to 1/16 pixel, and fills what lies inside row by row.
#pragma once

#include "shareForLines/path/LineWalk.h"
#include "shareForLines/path/PathLimits.h"
#include "shareForLines/plain/DabCanvas.h"

namespace streakfall {

// True when the dab can touch the buffer. A place that is no number touches nothing.
inline bool touchesCanvas(const CanvasView& canvas, const Dab& dab) {
    return dab.radius > 0.0 && dab.x - dab.radius <= canvas.width &&
           dab.y - dab.radius <= canvas.height && dab.x + dab.radius >= 0 &&
           dab.y + dab.radius >= 0;
}

// Paints one dab with the pen's own alpha. The dab touches the canvas. Throws only when the span
// table cannot grow.
template <class Depth>
void paintDab(DabCanvas& canvas, const typename Depth::Pixel& pen, const Dab& dab);

}  // namespace streakfall
