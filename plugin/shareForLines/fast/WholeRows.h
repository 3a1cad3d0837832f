// Whole rows of pixels: what they hold, and the pen over all of them.
#pragma once

#include <algorithm>

#include "shareForLines/canvas/CanvasView.h"
#include "shareForLines/disc/Range.h"
#include "shareForLines/fast/OrderOfPaint.h"
#include "shareForLines/fast/WhatShows.h"

namespace streakfall {

// These columns as far as they are on the canvas.
inline Range onCanvas(const CanvasView& canvas, const Range& columns) {
    return {std::max(columns.from, 0), std::min(columns.to, canvas.width - 1)};
}

// True when all pixels of these columns of row y are plain for the pen.
template <class Depth>
bool arePlain(const CanvasView& canvas, const typename Depth::Pixel& pen, const Range& columns,
              std::int32_t y) {
    const typename Depth::Pixel* row = canvas.row<Depth>(y);
    const Range on = onCanvas(canvas, columns);
    for (std::int32_t x = on.from; x <= on.to; ++x) {
        if (!isPlain<Depth>(row[x], pen)) return false;
    }
    return true;
}

// Merges the pen, at its own alpha, into pixels that are plain, or at white into any that show.
template <class Depth>
void mergeWholeRow(const CanvasView& canvas, const WhatShows& shows,
                   const typename Depth::Pixel& pen, const Range& columns, std::int32_t y) {
    typename Depth::Pixel* row = canvas.row<Depth>(y);
    const auto [from, to] = onCanvas(canvas, columns);
    if (pen.alpha != Depth::kWhite) {
        for (std::int32_t x = from; x <= to; ++x) raiseTo<Depth>(row[x], pen, pen.alpha);
        return;
    }
    if (from > to) return;
    if (!shows.knows()) {
        std::fill(row + from, row + to + 1, pen);
        return;
    }
    for (std::int32_t x = from, end; shows.nextShown(x, to, y, end); x = end + 1) {
        std::fill(row + x, row + end + 1, pen);
        if (end == to) return;
    }
}

}  // namespace streakfall
