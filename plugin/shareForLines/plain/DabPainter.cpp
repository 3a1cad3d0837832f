#include "shareForLines/plain/DabPainter.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "shareForLines/canvas/MergePixel.h"
#include "shareForLines/disc/CirclePath.h"
#include "shareForLines/disc/HollowRow.h"
#include "shareForLines/disc/SmallDabBox.h"

namespace streakfall {
namespace {

// One pixel of edge coverage g; outside the buffer nothing.
template <class Depth>
void plotCoveredPixel(DabCanvas& canvas, std::int32_t x, std::int32_t y,
                      const typename Depth::Pixel& pen, std::int32_t g) {
    if (x < 0 || y < 0 || x >= canvas.width || y >= canvas.height || g < 1) return;
    mergePixel<Depth>(canvas.row<Depth>(y)[x], pen, Depth::coverAlpha(pen.alpha, g));
}

template <class Depth>
void drawSmallDab(DabCanvas& canvas, const Dab& dab, const typename Depth::Pixel& pen) {
    SmallDabBox box;
    if (!box.place(dab.x, dab.y, dab.radius, canvas.width, canvas.height)) return;
    DistanceChain chain(box, dab.x, dab.y, dab.radius);
    for (std::int32_t y = box.ya; y <= box.yb; ++y, chain.nextRow()) {
        typename Depth::Pixel* row = canvas.row<Depth>(y);
        for (std::int32_t x = box.xa; x <= box.xb; ++x) {
            const std::int32_t g = coverageAt(canvas.weights, chain.nextPixel());
            if (g >= 1) mergePixel<Depth>(row[x], pen, Depth::coverAlpha(pen.alpha, g));
        }
    }
}

// One row of interior, at the pen's own alpha.
template <class Depth>
void fillSpan(DabCanvas& canvas, std::int32_t xStart, std::int32_t xEnd, std::int32_t y,
              std::int32_t rowDepth, const typename Depth::Pixel& pen) {
    if (xStart >= canvas.width || xEnd < 0 || y < 0 || y >= canvas.height) return;
    const std::int32_t a = std::max(xStart, 0);
    const std::int32_t b = std::min(xEnd, canvas.width - 1);
    typename Depth::Pixel* row = canvas.row<Depth>(y);
    const bool whole = !canvas.hollowDabs || fillsWholeRow(a, b, rowDepth);
    const auto merge = [&](std::int32_t from, std::int32_t to) {
        for (std::int32_t x = from; x <= to; ++x) mergePixel<Depth>(row[x], pen, pen.alpha);
    };
    if (whole) {
        merge(a, b);
    } else {
        merge(a, a + kHollowRim - 1);
        merge(b - kHollowRim + 1, b);
    }
}

template <class Depth>
void fillSpans(DabCanvas& canvas, std::int32_t xi, std::int32_t yi,
               const typename Depth::Pixel& pen) {
    const SpanTable& spans = canvas.spans;
    for (std::int32_t i = spans.rowCount - 1; i >= 0; --i) {
        const std::int32_t left = spans.left[static_cast<std::size_t>(i)];
        const std::int32_t right = spans.right[static_cast<std::size_t>(i)];
        if (left == SpanTable::kNoLeft || right == SpanTable::kNoRight || left > right) continue;
        const std::int32_t y = i + spans.firstRow;
        // Rows from this one to the dab's top or bottom, roughly.
        const std::int32_t rowDepth = spans.rowCount / 2 - 5 - std::abs(y);
        fillSpan<Depth>(canvas, left + xi, right + xi, y + yi, rowDepth, pen);
    }
}

template <class Depth>
void drawLargeDab(DabCanvas& canvas, const Dab& dab, const typename Depth::Pixel& pen) {
    const double r = dab.radius;
    const DabCentre c = quantiseCentre(dab.x, dab.y);
    resetSpans(canvas.spans, r, c.cx, c.cy);
    const auto plot = [&](std::int32_t x, std::int32_t y, double d) {
        plotCoveredPixel<Depth>(canvas, c.xi + x, c.yi + y, pen, coverageAt(canvas.weights, d));
        recordSpan(canvas.spans, x, y);
    };
    walkCircle(c, r, [&](std::int32_t x, std::int32_t y, const Arc& arc) {
        // The pixel reached and its neighbour across the circle.
        const double d = signedDistance(c, r, x, y);
        const std::int32_t side = d < 0 ? 1 : -1;
        const std::int32_t pairX = x + side * arc.outwardX, pairY = y + side * arc.outwardY;
        plot(x, y, d);
        plot(pairX, pairY, signedDistance(c, r, pairX, pairY));
    });
    fillSpans<Depth>(canvas, c.xi, c.yi, pen);
}

}  // namespace

template <class Depth>
void paintDab(DabCanvas& canvas, const typename Depth::Pixel& pen, const Dab& dab) {
    setCoverageBlend(canvas.weights, dab.radius);
    if (dab.radius < kLargeRadius) {
        drawSmallDab<Depth>(canvas, dab, pen);
    } else {
        canvas.hollowDabs = dab.hollow;
        drawLargeDab<Depth>(canvas, dab, pen);
    }
}

template void paintDab<Depth8>(DabCanvas&, const PF_Pixel&, const Dab&);
template void paintDab<Depth16>(DabCanvas&, const PF_Pixel16&, const Dab&);
template void paintDab<DepthFloat>(DabCanvas&, const PF_PixelFloat&, const Dab&);

}  // namespace streakfall
