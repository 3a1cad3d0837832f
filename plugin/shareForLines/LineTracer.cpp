#include "shareForLines/LineTracer.h"

#include "shareForLines/DabPainter.h"
#include "shareForLines/LineWalk.h"

namespace streakfall {

template <class Depth>
void traceLine(Stroke<Depth>& stroke, LineCanvas& canvas, const LineRecord& line) {
    if (!(stroke.thickness > 0.0) || stroke.pen.alpha == 0 || canvas.world == nullptr) return;
    LineWalk walk(stroke, line);
    typename Depth::Pixel pen = stroke.pen;
    Dab dab;
    while (walk.next(dab)) {
        if (!touchesCanvas(canvas, dab)) continue;
        pen.alpha = Depth::scaleAlpha(stroke.pen.alpha, dab.factor);
        if (pen.alpha != 0) paintDab<Depth>(canvas, pen, dab);
    }
}

template void traceLine<Depth8>(Stroke<Depth8>&, LineCanvas&, const LineRecord&);
template void traceLine<Depth16>(Stroke<Depth16>&, LineCanvas&, const LineRecord&);
template void traceLine<DepthFloat>(Stroke<DepthFloat>&, LineCanvas&, const LineRecord&);

}  // namespace streakfall
