// WholeRows: the pen at its own alpha over whole rows of pixels, and what they hold.
//
// Owner: the painter of a run, for that long. Needs a processor with AVX2.
#pragma once

#include <algorithm>
#include <bit>

#include "shareForLines/canvas/CanvasView.h"
#include "shareForLines/disc/Range.h"
#include "shareForLines/fast/OrderOfPaint.h"
#include "shareForLines/fast/WhatShows.h"
#include "shareForLines/simd/Begin.h"
#include "shareForLines/simd/EightPixels.h"
#include "shareForLines/simd/FillPixels.h"
#include "shareForLines/simd/Lanes.h"

namespace streakfall {

template <class Depth>
class WholeRows {
  public:
    using Pixel = typename Depth::Pixel;

    // All outlive it. linePen: insideGivesMost.
    WholeRows(const CanvasView& view, const WhatShows& visible, const Pixel& linePen)
        : canvas(view),
          shows(visible),
          pen(linePen),
          eight(linePen),
          whole(eight.alphas(lanes::raw(lanes::all(avx2::kInterior)))) {}

    // True when all pixels of these columns of row y are plain for the pen, which is below white.
    bool isPlainRow(const Range& columns, std::int32_t y) const {
        const Pixel* row = canvas.row<Depth>(y);
        auto [x, to] = onCanvas(columns);
        for (; x + lanes::kCount - 1 <= to; x += lanes::kCount) {
            auto pixels = eight.load(row + x);
            if (eight.merge(pixels, whole)) return false;
        }
        for (; x <= to; ++x) {
            if (!isPlain<Depth>(row[x], pen)) return false;
        }
        return true;
    }

    // True when eight columns from x on are, all on the canvas, each between two rows of its own.
    bool arePlainColumns(std::int32_t x, lanes::Ints from, lanes::Ints to) const {
        std::int32_t first = canvas.height, last = -1;
        for (std::int32_t i = 0; i < lanes::kCount; ++i) {
            first = std::min(first, from[i]);
            last = std::max(last, to[i]);
        }
        for (std::int32_t y = std::max(first, 0); y <= last; ++y) {
            const lanes::Ints at = lanes::all(y);
            const lanes::Ints coverage = (at >= from) & (at <= to) & avx2::kInterior;
            auto pixels = eight.load(canvas.row<Depth>(y) + x);
            if (eight.merge(pixels, eight.alphas(lanes::raw(coverage)))) return false;
        }
        return true;
    }
    // The same for one column.
    bool isPlainColumn(std::int32_t x, const Range& rows) const {
        for (std::int32_t y = rows.from; y <= rows.to; ++y) {
            if (!isPlain<Depth>(canvas.row<Depth>(y)[x], pen)) return false;
        }
        return true;
    }

    // Of these columns of row y, all on the canvas, those from the first to the last that paint of
    // the pen, at its alpha or less, may change.
    Range undone(Range columns, std::int32_t y) const {
        const Pixel* row = canvas.row<Depth>(y);
        constexpr std::int32_t kLast = lanes::kCount - 1;
        while (columns.from + kLast <= columns.to) {
            const unsigned left = ~doneAt(row + columns.from) & 0xFF;
            columns.from += std::min(std::countr_zero(left), lanes::kCount);
            if (left != 0) break;
        }
        while (columns.from + kLast <= columns.to) {
            const unsigned left = ~doneAt(row + columns.to - kLast) & 0xFF;
            columns.to -= std::min(std::countl_zero(left << 24), lanes::kCount);
            if (left != 0) break;
        }
        return columns;
    }

    // The same for eight columns from x on, all on the canvas, each between two rows of its own.
    void limitToUndone(std::int32_t x, lanes::Ints& from, lanes::Ints& to) const {
        std::int32_t first = canvas.height, last = -1;
        for (std::int32_t i = 0; i < lanes::kCount; ++i) {
            if (from[i] > to[i]) continue;
            first = std::min(first, from[i]);
            last = std::max(last, to[i]);
        }
        const auto isDone = [&](std::int32_t y) {
            const lanes::Ints at = lanes::all(y);
            const lanes::Ints outside = (at < from) | (at > to);
            return (doneAt(canvas.row<Depth>(y) + x) | lanes::bits(outside)) == 0xFF;
        };
        while (first <= last && isDone(first)) ++first;
        while (first <= last && isDone(last)) --last;
        from = lanes::most(from, lanes::all(first));
        to = lanes::least(to, lanes::all(last));
    }

    // Merges the pen into these columns of row y as far as they are on the canvas; all pixels are
    // plain. At white they may hold anything, and those that do not show are left out.
    void paint(const Range& columns, std::int32_t y) const {
        Pixel* row = canvas.row<Depth>(y);
        auto [x, to] = onCanvas(columns);
        if (pen.alpha == Depth::kWhite) {
            fill(row, x, to, y);
            return;
        }
        for (; x + lanes::kCount - 1 <= to; x += lanes::kCount) {
            auto pixels = eight.load(row + x);
            eight.merge(pixels, whole);
            eight.store(row + x, pixels);
        }
        for (; x <= to; ++x) raiseTo<Depth>(row[x], pen, pen.alpha);
    }

  private:
    // Bits for those of eight pixels that are done.
    unsigned doneAt(const Pixel* pixels) const {
        return lanes::bits(lanes::ints(eight.isDone(eight.load(pixels))));
    }

    Range onCanvas(const Range& columns) const {
        return {std::max(columns.from, 0), std::min(columns.to, canvas.width - 1)};
    }

    void fill(Pixel* row, std::int32_t from, std::int32_t to, std::int32_t y) const {
        if (from > to) return;
        if (!shows.knows()) {
            avx2::fillPixels(row + from, to + 1 - from, pen);
            return;
        }
        for (std::int32_t x = from, end; shows.nextShown(x, to, y, end); x = end + 1) {
            avx2::fillPixels(row + x, end + 1 - x, pen);
            if (end == to) return;
        }
    }

    const CanvasView& canvas;
    const WhatShows& shows;
    const Pixel& pen;
    const avx2::EightPixels<Depth> eight;
    const typename avx2::EightPixels<Depth>::Alphas whole;
};

}  // namespace streakfall

#include "shareForLines/simd/End.h"
