#include "shareForLines/LargeDabAvx2.h"

#include <algorithm>

#include "shareForLines/DabPainter.h"
#include "shareForLines/LargeDabBrushAvx2.h"

#pragma GCC push_options
#pragma GCC target("avx2")

namespace streakfall {

using namespace avx2;

template <class Depth>
void LargeDabAvx2<Depth>::paint(LineCanvas& canvas, const Pixel& pen, const Dab& dab) {
    if (dab.radius > LargeDabShape::kMaxRadius || !shape.place(dab.x, dab.y, dab.radius)) {
        paintDab<Depth>(canvas, pen, dab);
        return;
    }
    if (dab.radius != radius) {
        radius = dab.radius;
        CoverageBlend w;
        setCoverageBlend(w, radius);
        coverageTable(w, coverage.data());
    }
    const LargeDabBrush<Depth> brush(canvas, pen, shape, coverage.data(), dab.hollow);
    const Range rows = brush.rows(), steep = brush.steepRows();
    for (std::int32_t y = rows.from; y < steep.from; ++y) brush.paintRow(y);
    for (std::int32_t y = steep.from; y <= steep.to; y += kLanes) {
        brush.paintSteepRows(y, firstBits(steep.to - y + 1));
    }
    for (std::int32_t y = steep.to + 1; y <= rows.to; ++y) brush.paintRow(y);
}

template class LargeDabAvx2<Depth8>;
template class LargeDabAvx2<Depth16>;
template class LargeDabAvx2<DepthFloat>;

}  // namespace streakfall

#pragma GCC pop_options
