// The rows of one large dab, painted one by one, eight pixels at a time.
//
// Pixel by pixel this does what the dab painter does; LargeDabShape tells which pixels:
//
//  - In a row that only steep arcs cross, two pixels are plotted at each end, the last one inside
//    the circle and its neighbour; SteepRowsAvx2 finds them for eight rows at once.
//  - Other rows, and rows that the canvas cuts off, are looked at pixel by pixel at their ends;
//    what lies well inside the circle is interior for certain.
#pragma once

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdlib>

#include "shareForLines/HollowRow.h"
#include "shareForLines/LineCanvas.h"
#include "shareForLines/RowMergeAvx2.h"
#include "shareForLines/SteepRowsAvx2.h"

#pragma GCC push_options
#pragma GCC target("avx2")

namespace streakfall::avx2 {

// Owner: the painter of the dab, for that long.
template <class Depth>
class LargeDabBrush {
  public:
    using Pixel = typename Depth::Pixel;

    // table: coverage by column for the dab's radius. All of them outlive the brush.
    LargeDabBrush(LineCanvas& c, const Pixel& pen, const LargeDabShape& dab,
                  const std::uint8_t* table, bool isHollow)
        : canvas(c),
          shape(dab),
          coverage(table),
          hollow(isHollow),
          wholeRows(truncToI32(dab.radius + 5.0) - 5),
          merge(pen) {}

    // Rows of the canvas that the dab may touch, and those of them that only steep arcs cross.
    // Where there are none of these they are empty, before the first row.
    Range rows() const { return onCanvas(truncToI32(shape.radius) + 3); }
    Range steepRows() const {
        const Range all = rows();
        if (shape.radius < kSteepRadius) return {all.from, all.from - 1};
        const Range steep = onCanvas(truncToI32(shape.steepRowsTo() - 1.0));
        return steep.empty() ? Range{all.from, all.from - 1} : steep;
    }

    // False for a row that is painted whole, whatever its length.
    bool mayLeaveOpen(std::int32_t y) const { return hollow && rowDepth(y) >= kWholeDepth; }

    void paintRow(std::int32_t y) const {
        if (std::fabs(offset(y)) > shape.flatRowsFrom()) {
            paintRow<Arcs::kFlat>(y);
        } else {
            paintRow<Arcs::kBoth>(y);
        }
    }

    // What a row that only flat arcs cross plots in these columns, on the canvas.
    void paintPlotted(std::int32_t y, const Range& columns) const {
        Pixel* pixels = canvas.row<Depth>(y);
        for (std::int32_t x = columns.from; x <= columns.to; x += kLanes) {
            const std::int32_t count = std::min(columns.to - x + 1, kLanes);
            const __m256i cover = coverLanes<Arcs::kFlat>(shape, coverage, x, y).coverage;
            merge(pixels + x, count, x + kLanes <= canvas.width,
                  _mm256_and_si256(cover, firstLanes(count)));
        }
    }

    // Of rows y to y + 7 those whose bit is set. They are steep rows and on the canvas.
    void paintSteepRows(std::int32_t y, unsigned wanted) const {
        SteepRows rows;
        rows.place(shape, coverage, y - shape.centre.yi);
        for (; wanted != 0; wanted &= wanted - 1) {
            const std::int32_t i = std::countr_zero(wanted);
            paintSteepRow(y + i, rows, i);
        }
    }

  private:
    struct RowEnd;

    // Untouched for certain, and interior for certain, pixels outside and inside the circle.
    static constexpr double kReach = 1.1, kCoreInset = 1.6;
    // Of a row in which no pixel is interior for certain, or of an end, of the largest dab.
    static constexpr std::int32_t kMaxBlocks = 40;
    // Smaller dabs have too few steep rows.
    static constexpr double kSteepRadius = 9.0;

    static __m256i interiorIn(__m256i lanes) {
        return _mm256_and_si256(lanes, _mm256_set1_epi32(kInterior));
    }

    // Row y with these ends, of which i is the lane.
    void paintSteepRow(std::int32_t y, const SteepRows& rows, std::int32_t i) const {
        const Range row{shape.centre.xi + rows.left[i] - 1, shape.centre.xi + rows.right[i] + 1};
        if (row.from < 0 || row.to >= canvas.width) {
            paintRow<Arcs::kBoth>(y);
            return;
        }
        Pixel* pixels = canvas.row<Depth>(y);
        const bool open = hollow && !fillsWholeRow(row.from + 2, row.to - 2, rowDepth(y));
        const std::int32_t keep = open ? 2 + kHollowRim : kLanes;
        // Where the two ends overlap, the left one paints.
        const std::int32_t shared = std::max(2 * keep - row.count(), 0);
        const __m256i left = _mm256_set_epi64x(0, 0, 0, rows.leftPair[i]);
        const __m256i right = _mm256_set_epi64x(rows.rightPair[i], 0, 0, 0);
        merge(pixels + row.from, kLanes, true,
              _mm256_or_si256(left, interiorIn(lanesBetween(2, keep - 1))));
        merge(pixels + row.to - (kLanes - 1), kLanes, true,
              _mm256_or_si256(right, interiorIn(lanesBetween(kLanes - keep + shared, kLanes - 3))));
        if (!open) paintInterior(pixels, {row.from + kLanes, row.to - kLanes});
    }

    // The rows this far up and down from that of the centre.
    Range onCanvas(std::int32_t reach) const {
        return {std::max(shape.centre.yi - reach, 0),
                std::min(shape.centre.yi + reach, canvas.height - 1)};
    }

    // Rows from the centre down.
    double offset(std::int32_t y) const { return y - shape.centre.yi - shape.centre.cy; }

    // Rows from this one to the dab's top or bottom, roughly.
    std::int32_t rowDepth(std::int32_t y) const {
        return wholeRows - std::abs(y - shape.centre.yi);
    }

    // Columns of the canvas within `reach` of the centre, in row y.
    Range columnsWithin(double reach, std::int32_t y) const {
        const double dy = offset(y), chord2 = reach * reach - dy * dy;
        if (chord2 < 0.0) return kNone;
        const double chord = std::sqrt(chord2), middle = shape.centre.xi + shape.centre.cx;
        return {std::max(truncToI32(std::ceil(middle - chord)), 0),
                std::min(truncToI32(std::floor(middle + chord)), canvas.width - 1)};
    }

    template <Arcs kArcs>
    void paintRow(std::int32_t y) const {
        const Range row = columnsWithin(shape.radius + kReach, y);
        if (row.empty()) return;
        const Range core =
            shape.radius < kSteepRadius ? kNone : columnsWithin(shape.radius - kCoreInset, y);
        // The ends, in whole blocks; without a core between them the left end is all of the row.
        const auto blocks = [](std::int32_t n) { return (n + kLanes - 1) / kLanes * kLanes; };
        Range left{row.from, row.from + blocks(core.from - row.from) - 1};
        Range right{row.to - blocks(row.to - core.to) + 1, row.to};
        if (core.empty() || left.to >= right.from) {
            left.to = row.to;
            right.from = row.to + 1;
        }
        const Range middle{left.to + 1, right.from - 1};

        const RowEnd leftEnd = endOf<kArcs>(left, y), rightEnd = endOf<kArcs>(right, y);
        Range inner = leftEnd.interior;
        if (!middle.empty()) {
            if (inner.empty()) inner.from = middle.from;
            inner.to = middle.to;
        }
        if (!rightEnd.interior.empty()) {
            if (inner.empty()) inner.from = rightEnd.interior.from;
            inner.to = rightEnd.interior.to;
        }
        Range open = kNone;
        if (hollow && !inner.empty() && !fillsWholeRow(inner.from, inner.to, rowDepth(y))) {
            open = {inner.from + kHollowRim, inner.to - kHollowRim};
        }
        Pixel* pixels = canvas.row<Depth>(y);
        paintEnd(pixels, leftEnd, open);
        paintEnd(pixels, rightEnd, open);
        if (open.empty()) {
            paintInterior(pixels, middle);
        } else {
            paintInterior(pixels, {middle.from, std::min(middle.to, open.from - 1)});
            paintInterior(pixels, {std::max(middle.from, open.to + 1), middle.to});
        }
    }

    template <Arcs kArcs>
    RowEnd endOf(const Range& columns, std::int32_t y) const {
        RowEnd end;
        end.columns = columns;
        for (std::int32_t x = columns.from; x <= columns.to; x += kLanes) {
            LanesOfDab& lanes = end.blocks[end.count++];
            lanes = coverLanes<kArcs>(shape, coverage, x, y);
            auto bits = static_cast<unsigned>(_mm256_movemask_ps(
                _mm256_castsi256_ps(_mm256_cmpgt_epi32(lanes.coverage, _mm256_set1_epi32(255)))));
            if (columns.to - x < kLanes - 1) bits &= (1u << (columns.to - x + 1)) - 1;
            if (bits == 0) continue;
            if (end.interior.empty()) end.interior.from = x + std::countr_zero(bits);
            end.interior.to = x + 31 - std::countl_zero(bits);
        }
        return end;
    }

    void paintEnd(Pixel* pixels, const RowEnd& end, const Range& open) const {
        for (std::int32_t i = 0, x = end.columns.from; i < end.count; ++i, x += kLanes) {
            const std::int32_t count = std::min(end.columns.to - x + 1, kLanes);
            __m256i cover = _mm256_and_si256(end.blocks[i].coverage, firstLanes(count));
            if (!open.empty()) {
                cover = _mm256_andnot_si256(lanesBetween(open.from - x, open.to - x), cover);
            }
            if (!anyLane(cover)) continue;
            const bool room = x + kLanes <= canvas.width;
            merge(pixels + x, count, room, cover);
            const __m256i again = _mm256_and_si256(cover, end.blocks[i].twice);
            if (anyLane(again)) merge(pixels + x, count, room, again);
        }
    }

    void paintInterior(Pixel* pixels, const Range& columns) const {
        for (std::int32_t x = columns.from; x <= columns.to; x += kLanes) {
            const std::int32_t count = std::min(columns.to - x + 1, kLanes);
            merge(pixels + x, count, x + kLanes <= canvas.width, interiorIn(firstLanes(count)));
        }
    }

    LineCanvas& canvas;
    const LargeDabShape& shape;
    const std::uint8_t* const coverage;
    const bool hollow;
    const std::int32_t wholeRows;
    const RowMerge<Depth> merge;
};

// Neighbouring pixels of a row, looked at one by one.
template <class Depth>
struct LargeDabBrush<Depth>::RowEnd {
    Range columns;
    Range interior = kNone;
    std::int32_t count = 0;
    LanesOfDab blocks[kMaxBlocks];
};

}  // namespace streakfall::avx2

#pragma GCC pop_options
