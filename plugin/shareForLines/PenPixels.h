// The pen against whole pixels: where merging is a maximum of alphas, and that maximum.
#pragma once

#include <algorithm>

#include "shareForLines/LineCanvas.h"
#include "shareForLines/Range.h"

namespace streakfall {

// True when no coverage gives more than the pen's own alpha. In float 255 / 255 of some alphas is
// rounded up, and the edge of a dab can leave more than its inside.
template <class Depth>
bool insideGivesMost(const typename Depth::Pixel& pen) {
    return Depth::coverAlpha(pen.alpha, 255) <= pen.alpha;
}

// True when a pixel of these columns of row y, as far as they are on the canvas, holds a colour
// other than the pen's.
template <class Depth>
bool meetsOtherColors(const LineCanvas& canvas, const typename Depth::Pixel& pen,
                      const Range& columns, std::int32_t y) {
    const typename Depth::Pixel* row = canvas.row<Depth>(y);
    const std::int32_t to = std::min(columns.to, canvas.width - 1);
    for (std::int32_t x = std::max(columns.from, 0); x <= to; ++x) {
        const typename Depth::Pixel& p = row[x];
        if (p.alpha != 0 && (p.red != pen.red || p.green != pen.green || p.blue != pen.blue)) {
            return true;
        }
    }
    return false;
}

template <class Depth>
bool meetsOtherColors(const LineCanvas& canvas, const typename Depth::Pixel& pen,
                      const Range& columns, const Range& rows) {
    for (std::int32_t y = rows.from; y <= rows.to; ++y) {
        if (meetsOtherColors<Depth>(canvas, pen, columns, y)) return true;
    }
    return false;
}

// True when every pixel of these columns of row y, as far as they are on the canvas, holds the
// pen's colour at its alpha or more: it stays as it is.
template <class Depth>
bool isSettled(const LineCanvas& canvas, const typename Depth::Pixel& pen, const Range& columns,
               std::int32_t y) {
    const typename Depth::Pixel* row = canvas.row<Depth>(y);
    const std::int32_t to = std::min(columns.to, canvas.width - 1);
    for (std::int32_t x = std::max(columns.from, 0); x <= to; ++x) {
        const typename Depth::Pixel& p = row[x];
        if (p.red != pen.red || p.green != pen.green || p.blue != pen.blue ||
            !(p.alpha >= pen.alpha)) {
            return false;
        }
    }
    return true;
}

// Merges the pen, at its own alpha, into pixels that hold no other colour, or at white into any.
template <class Depth>
void mergeWholeRow(LineCanvas& canvas, const typename Depth::Pixel& pen, const Range& columns,
                   std::int32_t y) {
    typename Depth::Pixel* row = canvas.row<Depth>(y);
    const std::int32_t from = std::max(columns.from, 0);
    const std::int32_t to = std::min(columns.to, canvas.width - 1);
    if (pen.alpha == Depth::kWhite) {
        if (from > to) return;
        if (!canvas.shows.knows()) {
            std::fill(row + from, row + to + 1, pen);
            return;
        }
        for (std::int32_t x = from, end; canvas.shows.nextShown(x, to, y, end); x = end + 1) {
            std::fill(row + x, row + end + 1, pen);
            if (end == to) return;
        }
        return;
    }
    for (std::int32_t x = from; x <= to; ++x) {
        if (pen.alpha > row[x].alpha) row[x] = pen;
    }
}

}  // namespace streakfall
