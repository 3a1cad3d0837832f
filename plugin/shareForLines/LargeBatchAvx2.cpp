#include "shareForLines/LargeBatchAvx2.h"

#include <algorithm>
#include <bit>

#include "shareForLines/LargeDabBrushAvx2.h"
#include "shareForLines/PenPixels.h"
#include "shareForLines/RowEndsAvx2.h"

#pragma GCC push_options
#pragma GCC target("avx2")

namespace streakfall {
namespace {

using namespace avx2;

constexpr std::int32_t kShortBatch = 8;    // shorter ones are painted dab by dab
constexpr std::int64_t kMaxBox = 1 << 26;  // pixels, 8 MiB of them; so are wider ones
constexpr std::int32_t kGathered = 25;     // bits of 32 from any bit of the first byte on

Range meet(const Range& a, const Range& b) {
    return {std::max(a.from, b.from), std::min(a.to, b.to)};
}

// Columns of eight rows.
struct EightRanges {
    alignas(32) std::int32_t from[kLanes], to[kLanes];

    EightRanges() = default;
    EightRanges(__m256i f, __m256i t) {
        _mm256_store_si256(reinterpret_cast<__m256i*>(from), f);
        _mm256_store_si256(reinterpret_cast<__m256i*>(to), t);
    }
    Range operator[](std::int32_t i) const { return {from[i], to[i]}; }
};

// Whether rows y to y + 7 of a set hold all of these columns, each row its own: bits for those that
// do not. The columns lie in the set's box, or there are none.
unsigned missingIn(const CoveredPixels& set, std::int32_t y, __m256i from, __m256i to,
                   unsigned rows) {
    const __m256i one = _mm256_set1_epi32(1), zero = _mm256_setzero_si256();
    const __m256i count = _mm256_max_epi32(_mm256_add_epi32(_mm256_sub_epi32(to, from), one), zero);
    const __m256i any = _mm256_cmpgt_epi32(count, zero);
    const __m256i column =
        _mm256_and_si256(_mm256_sub_epi32(from, _mm256_set1_epi32(set.columns().from)), any);
    const __m256i place =
        _mm256_add_epi32(_mm256_mullo_epi32(_mm256_setr_epi32(0, 1, 2, 3, 4, 5, 6, 7),
                                            _mm256_set1_epi32(set.bytesARow())),
                         _mm256_srli_epi32(column, 3));
    alignas(32) static constexpr std::int32_t kBits[kLanes] = {1, 2, 4, 8, 16, 32, 64, 128};
    const __m256i bits = load(kBits);
    const __m256i asked = _mm256_cmpeq_epi32(
        _mm256_and_si256(_mm256_set1_epi32(static_cast<std::int32_t>(rows)), bits), bits);
    const __m256i word = _mm256_srlv_epi32(
        _mm256_mask_i32gather_epi32(zero, reinterpret_cast<const int*>(set.bytes(y)), place,
                                    _mm256_and_si256(asked, any), 1),
        _mm256_and_si256(column, _mm256_set1_epi32(7)));
    const __m256i wanted = _mm256_sub_epi32(_mm256_sllv_epi32(one, count), one);
    const __m256i wide = _mm256_cmpgt_epi32(count, _mm256_set1_epi32(kGathered));
    const __m256i missing =
        _mm256_or_si256(wide, _mm256_cmpgt_epi32(_mm256_andnot_si256(word, wanted), zero));
    auto found = static_cast<unsigned>(
        _mm256_movemask_ps(_mm256_castsi256_ps(_mm256_and_si256(missing, asked))));
    auto look = found & static_cast<unsigned>(_mm256_movemask_ps(_mm256_castsi256_ps(wide)));
    if (look == 0) return found;
    const EightRanges columns(from, to);
    for (; look != 0; look &= look - 1) {
        const std::int32_t i = std::countr_zero(look);
        if (set.holds(columns[i], y + i)) found &= ~(1u << i);
    }
    return found;
}

// Of rows y to y + 7 of a dab, the columns at each end that it may touch and does not cover for
// sure. In mixed rows these include the hollow rim; without an interior the left end is all of it.
struct RestOfRows {
    EightRanges leftColumns, rightColumns;
    unsigned left, right;  // bits for rows in which some of them are not in the set
    unsigned flat;         // bits for rows that only flat arcs cross

    RestOfRows(const RowEnds& ends, const LineCanvas& canvas, std::int32_t y, unsigned rows) {
        const __m256i zero = _mm256_setzero_si256(), one = _mm256_set1_epi32(1);
        const __m256i last = _mm256_set1_epi32(canvas.width - 1);
        const __m256i rim = _mm256_set1_epi32(kHollowRim - 1);
        const __m256i from = _mm256_max_epi32(ends.outerFrom, zero);
        const __m256i to = _mm256_min_epi32(ends.outerTo, last);
        const __m256i none = _mm256_cmpgt_epi32(ends.innerFrom, ends.innerTo);
        __m256i leftTo = _mm256_blendv_epi8(
            _mm256_sub_epi32(ends.innerFrom, one),
            _mm256_add_epi32(_mm256_max_epi32(ends.innerFrom, zero), rim), ends.mixed);
        __m256i rightFrom = _mm256_blendv_epi8(
            _mm256_add_epi32(ends.innerTo, one),
            _mm256_sub_epi32(_mm256_min_epi32(ends.innerTo, last), rim), ends.mixed);
        leftTo = _mm256_min_epi32(_mm256_blendv_epi8(leftTo, to, none), to);
        rightFrom =
            _mm256_max_epi32(_mm256_blendv_epi8(rightFrom, _mm256_add_epi32(to, one), none), from);
        flat = static_cast<unsigned>(_mm256_movemask_ps(_mm256_castsi256_ps(ends.flat)));
        left = missingIn(canvas.covered, y, from, leftTo, rows);
        right = missingIn(canvas.covered, y, rightFrom, to, rows);
        leftColumns = EightRanges(from, leftTo);
        rightColumns = EightRanges(rightFrom, to);
    }
};

}  // namespace

template <class Depth>
bool LargeBatchAvx2<Depth>::add(const Dab& dab, typename Depth::Channel) {
    if (count == kCapacity || dab.radius > LargeDabShape::kMaxRadius) return false;
    Entry& entry = entries[static_cast<std::size_t>(count)];
    if (!entry.shape.place(dab.x, dab.y, dab.radius)) return false;
    if (count == 0) tables.clear();
    entry.dab = dab;
    entry.coverage = tables.of(dab.radius);
    ++count;
    return true;
}

// Adds what the dab paints at the pen's own alpha to the canvas's set, as far as that is sure.
template <class Depth>
void LargeBatchAvx2<Depth>::cover(LineCanvas& canvas, const Pixel& pen, const Entry& entry) {
    CoveredPixels& set = canvas.covered;
    const LargeDabBrush<Depth> brush(canvas, pen, entry.shape, entry.coverage, entry.dab.hollow);
    const Range rows = meet(brush.rows(), unsettled);
    placeRows(inside, entry.shape);
    const __m256i rim = _mm256_set1_epi32(kHollowRim - 1);
    for (std::int32_t y = rows.from; y <= rows.to; y += kLanes) {
        const RowEnds ends(entry.shape, inside, y - entry.shape.centre.yi);
        const __m256i from = _mm256_max_epi32(ends.innerFrom, _mm256_setzero_si256());
        const __m256i to = _mm256_min_epi32(ends.innerTo, _mm256_set1_epi32(canvas.width - 1));
        // A mixed row's rim may begin before, with the pixel that is the last one inside.
        const __m256i rimTo =
            _mm256_add_epi32(_mm256_blendv_epi8(from, ends.edgeFrom, ends.mixed), rim);
        const __m256i rimFrom =
            _mm256_sub_epi32(_mm256_blendv_epi8(to, ends.edgeTo, ends.mixed), rim);
        const EightRanges whole(from, to), left(from, _mm256_min_epi32(rimTo, to)),
            right(_mm256_max_epi32(rimFrom, from), to);
        const std::int32_t n = std::min(rows.to - y + 1, kLanes);
        for (std::int32_t i = 0; i < n; ++i) {
            if (brush.mayLeaveOpen(y + i)) {
                if (!left[i].empty()) set.add(left[i], y + i);
                if (!right[i].empty()) set.add(right[i], y + i);
            } else {
                if (!whole[i].empty()) set.add(whole[i], y + i);
            }
        }
    }
}

// Paints the rows that may touch a pixel out of the set.
template <class Depth>
void LargeBatchAvx2<Depth>::paintRest(LineCanvas& canvas, const Pixel& pen, const Entry& entry) {
    const LargeDabBrush<Depth> brush(canvas, pen, entry.shape, entry.coverage, entry.dab.hollow);
    const Range rows = meet(brush.rows(), unsettled), steep = brush.steepRows();
    placeRows(inside, entry.shape);
    const auto paintRows = [&](std::int32_t from, std::int32_t to) {
        for (std::int32_t y = from; y <= to; y += kLanes) {
            const RowEnds ends(entry.shape, inside, y - entry.shape.centre.yi);
            const RestOfRows rest(ends, canvas, y, firstBits(to - y + 1));
            for (unsigned bits = rest.left | rest.right; bits != 0; bits &= bits - 1) {
                const std::int32_t i = std::countr_zero(bits);
                if ((rest.flat >> i & 1) == 0) {
                    brush.paintRow(y + i);
                    continue;
                }
                if ((rest.left >> i & 1) != 0) brush.paintPlotted(y + i, rest.leftColumns[i]);
                if ((rest.right >> i & 1) != 0) brush.paintPlotted(y + i, rest.rightColumns[i]);
            }
        }
    };
    const Range steepRows = meet(rows, steep);
    paintRows(rows.from, std::min(steep.from - 1, rows.to));
    for (std::int32_t y = steepRows.from; y <= steepRows.to; y += kLanes) {
        const RowEnds ends(entry.shape, inside, y - entry.shape.centre.yi);
        const RestOfRows rest(ends, canvas, y, firstBits(steepRows.to - y + 1));
        if ((rest.left | rest.right) != 0) brush.paintSteepRows(y, rest.left | rest.right);
    }
    paintRows(std::max(steep.to + 1, rows.from), rows.to);
}

// The rows and columns of the canvas that the dabs may touch.
template <class Depth>
typename LargeBatchAvx2<Depth>::Box LargeBatchAvx2<Depth>::box(const LineCanvas& canvas) const {
    double left = canvas.width, right = 0.0, upper = canvas.height, lower = 0.0;
    for (const Entry& e : held()) {
        const double reach = e.dab.radius + 4.0;
        left = std::min(left, e.dab.x - reach);
        right = std::max(right, e.dab.x + reach);
        upper = std::min(upper, e.dab.y - reach);
        lower = std::max(lower, e.dab.y + reach);
    }
    return {{std::max(truncToI32(left), 0), std::min(truncToI32(right), canvas.width - 1)},
            {std::max(truncToI32(upper), 0), std::min(truncToI32(lower), canvas.height - 1)}};
}

template <class Depth>
void LargeBatchAvx2<Depth>::flush(LineCanvas& canvas, const Pixel& pen,
                                  LargeDabAvx2<Depth>& single) {
    const auto [columns, rows] = box(canvas);
    if (count < kShortBatch || std::int64_t{columns.count()} * rows.count() > kMaxBox ||
        (pen.alpha != Depth::kWhite && meetsOtherColors<Depth>(canvas, pen, columns, rows))) {
        for (const Entry& e : held()) single.paint(canvas, pen, e.dab);
    } else {
        // Rows that keep what they have at the top and the bottom are left out.
        unsettled = rows;
        const auto isDone = [&, across = columns](std::int32_t y) {
            return isSettled<Depth>(canvas, pen, across, y);
        };
        while (!unsettled.empty() && isDone(unsettled.from)) ++unsettled.from;
        while (!unsettled.empty() && isDone(unsettled.to)) --unsettled.to;
        if (unsettled.empty()) {
            count = 0;
            return;
        }
        canvas.covered.start(columns, rows);
        for (const Entry& e : held()) cover(canvas, pen, e);
        for (const Entry& e : held()) paintRest(canvas, pen, e);
        for (std::int32_t y = rows.from; y <= rows.to; ++y) {
            canvas.covered.forRanges(
                y, [&](const Range& part) { mergeWholeRow<Depth>(canvas, pen, part, y); });
        }
    }
    count = 0;
}

template class LargeBatchAvx2<Depth8>;
template class LargeBatchAvx2<Depth16>;
template class LargeBatchAvx2<DepthFloat>;

}  // namespace streakfall

#pragma GCC pop_options
