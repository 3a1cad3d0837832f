#include "shareForLines/LargeDabAvx2.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdlib>

#include "shareForLines/DabPainter.h"
#include "shareForLines/HollowRow.h"
#include "shareForLines/RowMergeAvx2.h"
#include "shareForLines/SteepRowsAvx2.h"

#pragma GCC push_options
#pragma GCC target("avx2")

namespace streakfall {
namespace {

using namespace avx2;

// Untouched for certain, and interior for certain, pixels outside and inside the circle.
constexpr double kReach = 1.1;
constexpr double kCoreInset = 1.6;
// Of a row in which no pixel is interior for certain, or of an end, of the largest dab.
constexpr std::int32_t kMaxBlocks = 40;
// Smaller dabs have too few steep rows.
constexpr double kSteepRadius = 9.0;

inline __m256i interiorIn(__m256i lanes) {
    return _mm256_and_si256(lanes, _mm256_set1_epi32(kInterior));
}

}  // namespace

// The dab on its canvas: what all its rows share.
template <class Depth>
class LargeDabAvx2<Depth>::Brush {
  public:
    Brush(LineCanvas& c, const Pixel& p, const LargeDabAvx2& d, bool isHollow)
        : canvas(c),
          dab(d),
          shape(d.shape),
          hollow(isHollow),
          wholeRows(truncToI32(d.radius + 5.0) - 5),
          merge(p) {}

    void paintRow(std::int32_t y) const {
        if (std::fabs(offset(y)) > shape.flatRowsFrom()) {
            paintRow<Arcs::kFlat>(y);
        } else {
            paintRow<Arcs::kBoth>(y);
        }
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

  private:
    struct RowEnd;

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
            lanes = coverLanes<kArcs>(shape, dab.coverage.data(), x, y);
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
    const LargeDabAvx2& dab;
    const LargeDabShape& shape;
    const bool hollow;
    const std::int32_t wholeRows;
    const RowMerge<Depth> merge;
};

// Neighbouring pixels of a row, looked at one by one.
template <class Depth>
struct LargeDabAvx2<Depth>::Brush::RowEnd {
    Range columns;
    Range interior = kNone;
    std::int32_t count = 0;
    LanesOfDab blocks[kMaxBlocks];
};

template <class Depth>
void LargeDabAvx2<Depth>::paintSteepRows(const Brush& brush, std::int32_t from,
                                         std::int32_t to) const {
    for (std::int32_t y = from; y <= to; y += kLanes) {
        SteepRows rows;
        rows.place(shape, coverage.data(), y - shape.centre.yi);
        const std::int32_t count = std::min(to - y + 1, kLanes);
        for (std::int32_t i = 0; i < count; ++i) brush.paintSteepRow(y + i, rows, i);
    }
}

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
    const Brush brush(canvas, pen, *this, dab.hollow);
    const std::int32_t middle = shape.centre.yi, reach = truncToI32(radius) + 3;
    const std::int32_t top = std::max(middle - reach, 0);
    const std::int32_t bottom = std::min(middle + reach, canvas.height - 1);
    const std::int32_t steep = radius < kSteepRadius ? -1 : truncToI32(shape.steepRowsTo() - 1.0);
    const std::int32_t steepTop = std::clamp(middle - steep, top, bottom + 1);
    const std::int32_t steepBottom = std::clamp(middle + steep, steepTop - 1, bottom);
    for (std::int32_t y = top; y < steepTop; ++y) brush.paintRow(y);
    paintSteepRows(brush, steepTop, steepBottom);
    for (std::int32_t y = steepBottom + 1; y <= bottom; ++y) brush.paintRow(y);
}

template class LargeDabAvx2<Depth8>;
template class LargeDabAvx2<Depth16>;
template class LargeDabAvx2<DepthFloat>;

}  // namespace streakfall

#pragma GCC pop_options
