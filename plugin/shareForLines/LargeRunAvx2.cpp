#include "shareForLines/LargeRunAvx2.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdlib>

#include "shareForLines/ColumnSet.h"
#include "shareForLines/EightPixelsAvx2.h"
#include "shareForLines/HollowRow.h"
#include "shareForLines/LargeDabLanesAvx2.h"
#include "shareForLines/PenPixels.h"

#pragma GCC push_options
#pragma GCC target("avx2")

namespace streakfall {
namespace {

using namespace avx2;

constexpr std::int32_t kTwice = 512;   // added where a flat and a steep arc both plot
constexpr std::int32_t kShortRun = 6;  // shorter runs are painted dab by dab
constexpr double kReach = 1.2;         // untouched for certain, pixels outside of the circle
constexpr double kInset = 1.6;         // interior for certain, pixels inside of it
constexpr float kNever = -1e30f;

}  // namespace

// The dabs of the run that plot a block of eight pixels, and with what coverage.
template <class Depth>
struct LargeRunAvx2<Depth>::Block {
    Block(std::int32_t left, std::int32_t row, const Range& columns)
        : x(left),
          y(row),
          lanes(lanesBetween(columns.from - left, columns.to - left)),
          largest(_mm256_setzero_si256()) {}

    std::int32_t x, y;
    std::int32_t count = 0;
    __m256i lanes;    // those that are painted
    __m256i largest;  // coverage
    alignas(32) std::int32_t coverage[RunOfDabs::kCapacity][kLanes];
    std::int32_t times[RunOfDabs::kCapacity];

    LanesOfDab lanesOf(const RunOfDabs::Entry& entry) const;
    void add(const LanesOfDab& dab, std::int32_t repeated);
    void mergeAll(Pixel* pixels, const Pixel& pen) const;
};

template <class Depth>
inline LanesOfDab LargeRunAvx2<Depth>::Block::lanesOf(const RunOfDabs::Entry& entry) const {
    const LargeDabShape& shape = entry.shape;
    const std::uint8_t* table = entry.coverage;
    const double offset = std::fabs(y - shape.centre.yi - shape.centre.cy);
    if (offset > shape.flatRowsFrom()) return coverLanes<Arcs::kFlat>(shape, table, x, y);
    if (offset < shape.steepRowsTo()) return coverLanes<Arcs::kSteep>(shape, table, x, y);
    return coverLanes<Arcs::kBoth>(shape, table, x, y);
}

template <class Depth>
inline void LargeRunAvx2<Depth>::Block::add(const LanesOfDab& dab, std::int32_t repeated) {
    const __m256i covered = _mm256_and_si256(dab.coverage, lanes);
    if (_mm256_testz_si256(covered, covered) != 0) return;
    largest = _mm256_max_epi32(largest, covered);
    _mm256_store_si256(
        reinterpret_cast<__m256i*>(coverage[count]),
        _mm256_or_si256(covered, _mm256_and_si256(dab.twice, _mm256_set1_epi32(kTwice))));
    times[count++] = repeated;
}

// By the largest coverage where that is enough, else by every merge in walk order.
template <class Depth>
inline void LargeRunAvx2<Depth>::Block::mergeAll(Pixel* pixels, const Pixel& pen) const {
    const EightPixels<Depth> eight(pen);
    const auto old = eight.load(pixels);
    auto merged = old;
    if (eight.merge(merged, eight.alphas(largest))) {
        merged = old;
        for (std::int32_t k = 0; k < count; ++k) {
            const __m256i g = load(coverage[k]);
            const __m256i plain = _mm256_andnot_si256(_mm256_set1_epi32(kTwice), g);
            const __m256i twice = _mm256_cmpgt_epi32(g, _mm256_set1_epi32(kTwice));
            const bool again = _mm256_testz_si256(twice, twice) == 0;
            const auto a = eight.alphas(plain);
            for (std::int32_t i = 0; i < times[k]; ++i) {
                if (eight.merge(merged, a) && again) {
                    eight.merge(merged, eight.alphas(_mm256_and_si256(plain, twice)));
                }
            }
        }
    }
    eight.store(pixels, merged);
}

template <class Depth>
void LargeRunAvx2<Depth>::prepare(const LineCanvas& canvas) {
    const std::int32_t count = dabs.count();
    double upper = canvas.height, lower = 0.0;
    for (std::int32_t k = 0; k < count; ++k) {
        const RunOfDabs::Entry& e = dabs[k];
        const double r = e.dab.radius;
        upper = std::min(upper, e.dab.y - r);
        lower = std::max(lower, e.dab.y + r);
        const auto i = static_cast<std::size_t>(k);
        middleX[i] = static_cast<float>(e.shape.centre.xi + e.shape.centre.cx);
        middleY[i] = static_cast<float>(e.shape.centre.yi + e.shape.centre.cy);
        touch2[i] = static_cast<float>((r + kReach) * (r + kReach) + 1.0);
        inside2[i] = static_cast<float>((r - kInset) * (r - kInset));
        dabRows[i].y = -1;
        openRows[i] = e.dab.hollow ? static_cast<float>(r - 6.0) : kNever;
    }
    for (auto i = static_cast<std::size_t>(count); i % kLanes != 0; ++i) {
        middleX[i] = middleY[i] = inside2[i] = 0.0f;
        touch2[i] = openRows[i] = kNever;
    }
    top = std::max(0, truncToI32(upper) - 3);
    bottom = std::min(canvas.height - 1, truncToI32(lower) + 3);
    canvasWidth = canvas.width;
    rows.prepare(dabs);
}

// Of eight dabs, those that may paint the eight pixels from (x, y) on.
template <class Depth>
inline unsigned LargeRunAvx2<Depth>::touching(std::int32_t first, std::int32_t x, std::int32_t y,
                                              Hollow hollow) const {
    const auto i = static_cast<std::size_t>(first);
    const __m256 zero = _mm256_setzero_ps(), sign = _mm256_set1_ps(-0.0f);
    const __m256 left = _mm256_set1_ps(static_cast<float>(x));
    const __m256 right = _mm256_set1_ps(static_cast<float>(x + kLanes - 1));
    const __m256 middle = _mm256_load_ps(&middleX[i]);
    const __m256 dy =
        _mm256_sub_ps(_mm256_set1_ps(static_cast<float>(y)), _mm256_load_ps(&middleY[i]));
    const __m256 dy2 = _mm256_mul_ps(dy, dy);
    const __m256 gap = _mm256_max_ps(
        _mm256_max_ps(_mm256_sub_ps(left, middle), _mm256_sub_ps(middle, right)), zero);
    const __m256 touches = _mm256_cmp_ps(_mm256_add_ps(_mm256_mul_ps(gap, gap), dy2),
                                         _mm256_load_ps(&touch2[i]), _CMP_LE_OQ);
    auto bits = static_cast<unsigned>(_mm256_movemask_ps(touches));
    // At the canvas' edges a row that goes on has an end.
    if (hollow == Hollow::kPainted || x < kHollowRim || x + kLanes + kHollowRim > canvasWidth) {
        return bits;
    }
    const __m256 chord = _mm256_sub_ps(
        _mm256_sqrt_ps(_mm256_max_ps(_mm256_sub_ps(_mm256_load_ps(&inside2[i]), dy2), zero)),
        _mm256_set1_ps(5.0f));
    const __m256 open = _mm256_and_ps(
        _mm256_cmp_ps(_mm256_andnot_ps(sign, dy), _mm256_load_ps(&openRows[i]), _CMP_LE_OQ),
        _mm256_and_ps(_mm256_cmp_ps(_mm256_sub_ps(middle, chord), left, _CMP_LE_OQ),
                      _mm256_cmp_ps(_mm256_add_ps(middle, chord), right, _CMP_GE_OQ)));
    return bits & ~static_cast<unsigned>(_mm256_movemask_ps(open));
}

// These columns of row y of the canvas, eight at most.
template <class Depth>
void LargeRunAvx2<Depth>::paintBlock(LineCanvas& canvas, const Pixel& pen, const Range& columns,
                                     std::int32_t y, Hollow hollow) {
    // Eight pixels of the canvas around them, where it has eight.
    const std::int32_t x = std::max(std::min(columns.from, canvas.width - kLanes), 0);
    const Range near = dabs.nearPixels(x, y, kLanes);
    if (near.empty()) return;
    Block block(x, y, columns);
    for (std::int32_t first = near.from / kLanes * kLanes; first <= near.to; first += kLanes) {
        unsigned bits = touching(first, x, y, hollow);
        for (; bits != 0; bits &= bits - 1) {
            const RunOfDabs::Entry& e = dabs[first + std::countr_zero(bits)];
            LanesOfDab lanes = block.lanesOf(e);
            if (hollow == Hollow::kOpen && e.dab.hollow) {
                const Range open = rowOf(first + std::countr_zero(bits), y).open;
                lanes.coverage =
                    _mm256_andnot_si256(lanesBetween(open.from - x, open.to - x), lanes.coverage);
            }
            block.add(lanes, e.times);
        }
    }
    Pixel* pixels = canvas.row<Depth>(y) + x;
    if (canvas.width >= kLanes) {
        block.mergeAll(pixels, pen);
    } else {
        Pixel narrow[kLanes] = {};
        std::copy_n(pixels, canvas.width, narrow);
        block.mergeAll(narrow, pen);
        std::copy_n(narrow, canvas.width, pixels);
    }
}

// Columns of the canvas, of row y.
template <class Depth>
void LargeRunAvx2<Depth>::paintBlocks(LineCanvas& canvas, const Pixel& pen, const Range& columns,
                                      std::int32_t y, Hollow hollow) {
    for (std::int32_t x = columns.from; x <= columns.to; x += kLanes) {
        paintBlock(canvas, pen, {x, std::min(x + kLanes - 1, columns.to)}, y, hollow);
    }
}

template <class Depth>
void LargeRunAvx2<Depth>::paintRow(LineCanvas& canvas, const Pixel& pen, std::int32_t y) {
    const RunRow row = rows.row(y);
    const std::int32_t from = std::max(row.reach.from, 0);
    const std::int32_t to = std::min(row.reach.to, canvas.width - 1);
    const auto rimHollow = [](bool unsure) { return unsure ? Hollow::kOpen : Hollow::kPainted; };
    const bool any = !row.unsure.empty();
    if (row.core.empty()) {
        paintBlocks(canvas, pen, {from, to}, y, rimHollow(any));
        return;
    }
    paintBlocks(canvas, pen, {from, std::min(row.core.from - 1, to)}, y,
                rimHollow(any && row.unsure.from < row.core.from));
    paintBlocks(canvas, pen, {std::max(row.core.to + 1, from), to}, y,
                rimHollow(any && row.unsure.to > row.core.to));
    const Range open{std::max(row.unsure.from, row.core.from),
                     std::min(row.unsure.to, row.core.to)};
    if (!any || open.empty()) {
        mergeWholeRow<Depth>(canvas, pen, row.core, y);
        return;
    }
    mergeWholeRow<Depth>(canvas, pen, {row.core.from, open.from - 1}, y);
    mergeWholeRow<Depth>(canvas, pen, {open.to + 1, row.core.to}, y);
    paintUnsure(canvas, pen, {std::max(open.from, 0), std::min(open.to, canvas.width - 1)}, y);
}

// Columns of row y in the canvas, each inside some dab.
template <class Depth>
void LargeRunAvx2<Depth>::paintUnsure(LineCanvas& canvas, const Pixel& pen, const Range& columns,
                                      std::int32_t y) {
    if (columns.count() > ColumnSet::kMaxColumns) {
        paintBlocks(canvas, pen, columns, y, Hollow::kOpen);
        return;
    }
    if (columns.empty()) return;
    const ColumnSet painted = paintedInside(columns, y);
    for (std::int32_t x = columns.from; x <= columns.to;) {
        bool inSet = false;
        Range part = painted.runFrom(x, inSet);
        if (inSet) {
            mergeWholeRow<Depth>(canvas, pen, part, y);
        } else {
            // The block may as well hold what follows.
            part.to = std::min(x + kLanes - 1, columns.to);
            paintBlock(canvas, pen, part, y, Hollow::kOpen);
        }
        x = part.to + 1;
    }
}

// Those columns that some dab has inside and does not leave open. From the first dab that comes
// to the row, and back from the last that leaves it, until one holds all of the columns open: the
// dabs between do so, too.
template <class Depth>
ColumnSet LargeRunAvx2<Depth>::paintedInside(const Range& columns, std::int32_t y) {
    ColumnSet painted(columns);
    // False when the dab holds them all open.
    const auto add = [&](std::int32_t k) {
        const DabRow& row = rowOf(k, y);
        if (row.open.empty()) {
            painted.add(row.inside);
            return true;
        }
        painted.add({row.inside.from, row.open.from - 1});
        painted.add({row.open.to + 1, row.inside.to});
        return row.open.from > columns.from || row.open.to < columns.to;
    };
    const Range near = dabs.nearRow(y);
    std::int32_t first = near.from, last = near.to;
    while (first <= last && add(first)) ++first;
    while (last > first && add(last)) --last;
    return painted;
}

// The ends of row y of dab k.
template <class Depth>
const typename LargeRunAvx2<Depth>::DabRow& LargeRunAvx2<Depth>::rowOf(std::int32_t k,
                                                                       std::int32_t y) {
    DabRow& row = dabRows[static_cast<std::size_t>(k)];
    if (row.y == y) return row;
    const LargeDabShape& shape = dabs[k].shape;
    row = {y, shape.interiorOf(y - shape.centre.yi), kNone};
    if (row.inside.empty()) return row;
    row.inside.from = std::max(row.inside.from + shape.centre.xi, 0);
    row.inside.to = std::min(row.inside.to + shape.centre.xi, canvasWidth - 1);
    const std::int32_t rowDepth =
        truncToI32(shape.radius + 5.0) - 5 - std::abs(y - shape.centre.yi);
    if (dabs[k].dab.hollow && !row.inside.empty() &&
        !fillsWholeRow(row.inside.from, row.inside.to, rowDepth)) {
        row.open = {row.inside.from + kHollowRim, row.inside.to - kHollowRim};
    }
    return row;
}

// True when some pixel that the run may touch holds another colour.
template <class Depth>
bool LargeRunAvx2<Depth>::meetsOthers(const LineCanvas& canvas, const Pixel& pen) const {
    for (std::int32_t y = top; y <= bottom; ++y) {
        if (meetsOtherColors<Depth>(canvas, pen, rows.row(y).reach, y)) return true;
    }
    return false;
}

template <class Depth>
void LargeRunAvx2<Depth>::flush(LineCanvas& canvas, const Pixel& pen, LargeDabAvx2<Depth>& single) {
    bool byDabs = dabs.count() < kShortRun;
    if (!byDabs) {
        prepare(canvas);
        byDabs = pen.alpha != Depth::kWhite && meetsOthers(canvas, pen);
    }
    if (byDabs) {
        for (std::int32_t k = 0; k < dabs.count(); ++k) {
            const RunOfDabs::Entry& e = dabs[k];
            for (std::int32_t i = 0; i < e.times; ++i) single.paint(canvas, pen, e.dab);
        }
    } else {
        for (std::int32_t y = top; y <= bottom; ++y) paintRow(canvas, pen, y);
    }
    dabs.clear();
}

template class LargeRunAvx2<Depth8>;
template class LargeRunAvx2<Depth16>;
template class LargeRunAvx2<DepthFloat>;

}  // namespace streakfall

#pragma GCC pop_options
