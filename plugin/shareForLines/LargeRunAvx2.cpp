#include "shareForLines/LargeRunAvx2.h"

#include <algorithm>
#include <cmath>

#include "shareForLines/EightPixelsAvx2.h"
#include "shareForLines/LargeDabLanesAvx2.h"

#pragma GCC push_options
#pragma GCC target("avx2")

namespace streakfall {
namespace {

using namespace avx2;

constexpr std::int32_t kTwice = 512;      // added where a flat and a steep arc both plot
constexpr std::int32_t kShortRun = 6;     // shorter runs are painted dab by dab
constexpr double kCoreInset = 1.6;        // interior for certain, pixels inside the circle
constexpr double kReach = 1.0;            // untouched for certain, pixels outside of it
constexpr double kQuantised = 0.1;        // room for two quantised centres
constexpr double kMaxStep = 1.05;         // from dab to dab of a run, pixels
constexpr float kMinChord2 = 25.0f;       // half a core chord, squared, that bounds the core
constexpr double kFarthestRowEnd = 2.95;  // how far the end of a hollow row may move

}  // namespace

// The dabs of the run that plot a block of eight pixels, and with what coverage.
template <class Depth>
struct LargeRunAvx2<Depth>::Block {
    Block(std::int32_t left, std::int32_t row)
        : x(left), y(row), lanes(_mm256_set1_epi32(-1)), largest(_mm256_setzero_si256()) {}

    std::int32_t x, y;
    std::int32_t count = 0;
    __m256i lanes;    // those inside the canvas
    __m256i largest;  // coverage
    alignas(32) std::int32_t coverage[kDabs][kLanes];
    std::int32_t times[kDabs];

    void cover(const Entry& entry);
    void mergeAll(Pixel* pixels, const Pixel& pen) const;
    void replay(Pixel& pixel, int lane, const Pixel& pen,
                const AlphaByCoverage<Depth>& alphas) const;
};

template <class Depth>
inline void LargeRunAvx2<Depth>::Block::cover(const Entry& entry) {
    const LanesOfDab dab = coverLanes(entry.shape, entry.coverage, x, y);
    if (_mm256_testz_si256(dab.coverage, lanes) != 0) return;
    largest = _mm256_max_epi32(largest, dab.coverage);
    _mm256_store_si256(
        reinterpret_cast<__m256i*>(coverage[count]),
        _mm256_or_si256(dab.coverage, _mm256_and_si256(dab.twice, _mm256_set1_epi32(kTwice))));
    times[count++] = entry.times;
}

// All eight pixels at once: by the largest coverage where that is enough, else by every merge in
// walk order.
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
            const __m256i twice =
                _mm256_and_si256(plain, _mm256_cmpgt_epi32(g, _mm256_set1_epi32(kTwice)));
            const auto a = eight.alphas(plain), again = eight.alphas(twice);
            for (std::int32_t i = 0; i < times[k]; ++i) {
                if (eight.merge(merged, a)) eight.merge(merged, again);
            }
        }
    }
    eight.store(pixels, merged);
}

// The merges that reach one pixel of another colour, in walk order.
template <class Depth>
inline void LargeRunAvx2<Depth>::Block::replay(Pixel& pixel, int lane, const Pixel& pen,
                                               const AlphaByCoverage<Depth>& alphas) const {
    for (std::int32_t k = 0; k < count; ++k) {
        const std::int32_t g = coverage[k][lane];
        if (g == 0) continue;
        const auto a = alphas[static_cast<std::size_t>(g & ~kTwice)];
        const std::int32_t merges = (g & kTwice) != 0 ? 2 * times[k] : times[k];
        for (std::int32_t i = 0; i < merges; ++i) mergePixel<Depth>(pixel, pen, a);
    }
}

// The ends of a hollow row lie on the circle, or on the circle of the row next to it, at most
// r - 2 from the centre row; there a step of the pen moves them the most.
template <class Depth>
bool LargeRunAvx2<Depth>::hollowIsWhole(const Dab& dab) const {
    const double r = dab.radius;
    const double slope = (r - 2.0) / std::sqrt(4.0 * r - 4.0);
    const double growth =
        count > 0 ? std::fabs(r - dabs[static_cast<std::size_t>(count - 1)].dab.radius) : 0.0;
    const double moves = std::fabs(ux) + std::fabs(uy) * slope +
                         growth * (r / std::sqrt(4.0 * r - 4.0)) + (1.0 + slope) / 16.0;
    return moves <= kFarthestRowEnd;
}

template <class Depth>
bool LargeRunAvx2<Depth>::add(const Dab& dab) {
    if (count == kDabs || dab.radius > LargeDabShape::kMaxRadius) return false;
    Entry& entry = dabs[static_cast<std::size_t>(count)];
    if (count > 0) {
        Entry& before = dabs[static_cast<std::size_t>(count - 1)];
        const double dx = dab.x - before.dab.x, dy = dab.y - before.dab.y;
        if (dx * dx + dy * dy > kMaxStep * kMaxStep) return false;
        const bool same = quantiseCentre(dab.x, dab.y) == before.shape.centre &&
                          dab.radius == before.dab.radius && dab.hollow == before.dab.hollow;
        if (same) {
            ++before.times;
            return true;
        }
    }
    if (dab.hollow && !hollowIsWhole(dab)) return false;
    if (!entry.shape.place(dab.x, dab.y, dab.radius)) return false;
    entry.dab = dab;
    entry.times = 1;
    if (count == 0) tableCount = 0;
    if (count > 0 && dabs[static_cast<std::size_t>(count - 1)].dab.radius == dab.radius) {
        entry.coverage = dabs[static_cast<std::size_t>(count - 1)].coverage;
    } else {
        CoverageBlend w;
        setCoverageBlend(w, dab.radius);
        auto& table = tables[static_cast<std::size_t>(tableCount++)];
        coverageTable(w, table.data());
        entry.coverage = table.data();
    }
    ++count;
    return true;
}

template <class Depth>
void LargeRunAvx2<Depth>::prepare(LineCanvas& canvas, const Pixel& pen) {
    const Dab& first = dabs[0].dab;
    double upper = first.y, lower = first.y;
    widest = 0.0;
    samples = 0;
    steps = 0;
    double widestSince = 0.0;  // of the dabs behind the sample before
    for (std::int32_t k = 0; k < count; ++k) {
        const Entry& e = dabs[static_cast<std::size_t>(k)];
        const double r = e.dab.radius;
        upper = std::min(upper, e.dab.y - r);
        lower = std::max(lower, e.dab.y + r);
        widest = std::max(widest, r);
        widestSince = std::max(widestSince, r);
        const double along = (e.dab.x - first.x) * ux + (e.dab.y - first.y) * uy;
        const std::int32_t step = std::clamp(truncToI32(along), 0, kDabs);
        for (; steps <= step; ++steps) {
            firstAtStep[static_cast<std::size_t>(steps)] = static_cast<std::int16_t>(k);
        }
        if (k % kSampling == 0 || k == count - 1) {
            const auto i = static_cast<std::size_t>(samples++);
            sampleX[i] = static_cast<float>(e.shape.centre.xi + e.shape.centre.cx);
            sampleY[i] = static_cast<float>(e.shape.centre.yi + e.shape.centre.cy);
            sampleCore[i] = static_cast<float>((r - kCoreInset) * (r - kCoreInset));
            // Covers the dabs since the sample before as well, however wide a steep ramp made them.
            const double reach = widestSince + kReach + kQuantised + (kSampling - 1) * kMaxStep;
            sampleReach[i] = static_cast<float>(reach * reach);
            widestSince = 0.0;
        }
    }
    for (std::int32_t i = samples; i % kLanes != 0; ++i) {
        sampleX[static_cast<std::size_t>(i)] = sampleY[static_cast<std::size_t>(i)] = 0.0f;
        sampleCore[static_cast<std::size_t>(i)] = sampleReach[static_cast<std::size_t>(i)] = -1e30f;
    }
    top = std::max(0, truncToI32(upper) - 3);
    bottom = std::min(canvas.height - 1, truncToI32(lower) + 3);
    alphas.set(pen.alpha);
}

// The run's core in row y, and how far it may touch the row. Both may be empty.
template <class Depth>
void LargeRunAvx2<Depth>::bounds(std::int32_t y, Interval& core, Interval& reach) const {
    const __m256 far = _mm256_set1_ps(1e9f);
    __m256 coreFrom = far, coreTo = far, reachFrom = far, reachTo = far;  // ends negated
    const __m256 row = _mm256_set1_ps(static_cast<float>(y));
    const __m256 zero = _mm256_setzero_ps();
    for (std::size_t i = 0; i < static_cast<std::size_t>(samples); i += kLanes) {
        const __m256 x = _mm256_load_ps(&sampleX[i]);
        const __m256 dy = _mm256_sub_ps(row, _mm256_load_ps(&sampleY[i]));
        const __m256 dy2 = _mm256_mul_ps(dy, dy);
        const auto take = [&](const float* squared, float least, __m256& from, __m256& to) {
            const __m256 chord2 = _mm256_sub_ps(_mm256_load_ps(squared), dy2);
            const __m256 valid = _mm256_cmp_ps(chord2, _mm256_set1_ps(least), _CMP_GE_OQ);
            const __m256 chord = _mm256_sqrt_ps(_mm256_max_ps(chord2, zero));
            from = _mm256_min_ps(from, _mm256_blendv_ps(far, _mm256_sub_ps(x, chord), valid));
            to = _mm256_min_ps(
                to, _mm256_blendv_ps(far, _mm256_sub_ps(zero, _mm256_add_ps(x, chord)), valid));
        };
        take(&sampleCore[i], kMinChord2, coreFrom, coreTo);
        take(&sampleReach[i], 0.0f, reachFrom, reachTo);
    }
    const auto least = [](__m256 v) {
        alignas(32) float lanes[kLanes];
        _mm256_store_ps(lanes, v);
        return static_cast<double>(*std::min_element(lanes, lanes + kLanes));
    };
    core = {truncToI32(std::ceil(least(coreFrom))), truncToI32(std::floor(-least(coreTo)))};
    reach = {truncToI32(std::floor(least(reachFrom))), truncToI32(std::ceil(-least(reachTo)))};
}

// The dabs that may touch the eight pixels from (x, y) on; from > to when there are none.
template <class Depth>
typename LargeRunAvx2<Depth>::Interval LargeRunAvx2<Depth>::dabsNear(std::int32_t x,
                                                                     std::int32_t y) const {
    const double dx = x - dabs[0].dab.x, dy = y - dabs[0].dab.y;
    const double along = dx * ux + dy * uy, across = dy * ux - dx * uy;
    const double alongEnd = along + (kLanes - 1) * ux, acrossEnd = across - (kLanes - 1) * uy;
    const double nearest =
        across * acrossEnd < 0.0 ? 0.0 : std::min(std::fabs(across), std::fabs(acrossEnd));
    const double reach = widest + kReach + kQuantised;
    const double width2 = reach * reach - nearest * nearest;
    if (width2 < 0.0) return {0, -1};
    const double width = std::sqrt(width2) + 0.5;
    const std::int32_t from = truncToI32(std::min(along, alongEnd) - width);
    const std::int32_t to = truncToI32(std::max(along, alongEnd) + width) + 1;
    if (from >= steps || to < 0) return {0, -1};
    const std::int32_t firstDab = firstAtStep[static_cast<std::size_t>(std::max(from, 0))];
    const std::int32_t lastDab =
        to >= steps ? count - 1 : firstAtStep[static_cast<std::size_t>(to)];
    return {firstDab, lastDab};
}

template <class Depth>
void LargeRunAvx2<Depth>::paintRim(LineCanvas& canvas, const Pixel& pen, std::int32_t x,
                                   std::int32_t y) {
    const Interval near = dabsNear(x, y);
    if (near.from > near.to) return;
    Block block(x, y);
    const std::int32_t before = std::max(-x, 0);
    const std::int32_t lanesTo = std::min(canvas.width - x, kLanes);
    if (before > 0 || lanesTo < kLanes) {
        block.lanes = _mm256_andnot_si256(firstLanes(std::min(before, kLanes)),
                                          firstLanes(std::max(lanesTo, 0)));
    }
    for (std::int32_t k = near.from; k <= near.to; ++k) {
        block.cover(dabs[static_cast<std::size_t>(k)]);
    }
    if (x >= 0 && x + kLanes <= canvas.width) {
        block.mergeAll(canvas.row<Depth>(y) + x, pen);
        return;
    }
    alignas(32) std::int32_t largest[kLanes];
    const __m256i most = _mm256_and_si256(block.largest, block.lanes);
    _mm256_store_si256(reinterpret_cast<__m256i*>(largest), most);
    auto lanes = static_cast<unsigned>(
        _mm256_movemask_ps(_mm256_castsi256_ps(_mm256_cmpgt_epi32(most, _mm256_setzero_si256()))));
    Pixel* pixels = canvas.row<Depth>(y) + x;
    for (; lanes != 0; lanes &= lanes - 1) {
        const int lane = __builtin_ctz(lanes);
        Pixel& pixel = pixels[lane];
        const auto a = alphas[static_cast<std::size_t>(largest[lane])];
        const bool sameColor =
            pixel.red == pen.red && pixel.green == pen.green && pixel.blue == pen.blue;
        if (pixel.alpha == 0 || a == Depth::kWhite || sameColor) {
            mergePixel<Depth>(pixel, pen, a);
        } else {
            block.replay(pixel, lane, pen, alphas);
        }
    }
}

template <class Depth>
void LargeRunAvx2<Depth>::fillCore(LineCanvas& canvas, const Pixel& pen, std::int32_t y,
                                   Interval core) {
    Pixel* row = canvas.row<Depth>(y);
    const std::int32_t from = std::max(core.from, 0);
    const std::int32_t to = std::min(core.to, canvas.width - 1);
    if (pen.alpha == Depth::kWhite) {
        if (from <= to) std::fill(row + from, row + to + 1, pen);
        return;
    }
    for (std::int32_t x = from; x <= to; ++x) {
        if (pen.alpha > row[x].alpha) row[x] = pen;
    }
}

template <class Depth>
void LargeRunAvx2<Depth>::paintRow(LineCanvas& canvas, const Pixel& pen, std::int32_t y) {
    Interval core, reach;
    bounds(y, core, reach);
    const std::int32_t from = std::max(reach.from, 0);
    const std::int32_t to = std::min(reach.to, canvas.width - 1);
    if (core.from > core.to) {
        for (std::int32_t x = from; x <= to; x += kLanes) paintRim(canvas, pen, x, y);
        return;
    }
    fillCore(canvas, pen, y, core);
    for (std::int32_t x = core.from - kLanes; x + kLanes > from; x -= kLanes) {
        if (x < canvas.width) paintRim(canvas, pen, x, y);
    }
    for (std::int32_t x = core.to + 1; x <= to; x += kLanes) {
        if (x + kLanes > 0) paintRim(canvas, pen, x, y);
    }
}

// True when some pixel that the run may touch holds another colour.
template <class Depth>
bool LargeRunAvx2<Depth>::meetsOtherColors(LineCanvas& canvas, const Pixel& pen) const {
    for (std::int32_t y = top; y <= bottom; ++y) {
        Interval core, reach;
        bounds(y, core, reach);
        const Pixel* row = canvas.row<Depth>(y);
        for (std::int32_t x = std::max(reach.from, 0); x <= std::min(reach.to, canvas.width - 1);
             ++x) {
            const Pixel& p = row[x];
            if (p.alpha != 0 && (p.red != pen.red || p.green != pen.green || p.blue != pen.blue)) {
                return true;
            }
        }
    }
    return false;
}

template <class Depth>
void LargeRunAvx2<Depth>::flush(LineCanvas& canvas, const Pixel& pen, LargeDabAvx2<Depth>& single) {
    if (count == 0) return;
    bool byDabs = count < kShortRun;
    if (!byDabs) {
        prepare(canvas, pen);
        byDabs = pen.alpha != Depth::kWhite && meetsOtherColors(canvas, pen);
    }
    if (byDabs) {
        for (std::int32_t k = 0; k < count; ++k) {
            const Entry& e = dabs[static_cast<std::size_t>(k)];
            for (std::int32_t i = 0; i < e.times; ++i) single.paint(canvas, pen, e.dab);
        }
    } else {
        for (std::int32_t y = top; y <= bottom; ++y) paintRow(canvas, pen, y);
    }
    count = 0;
}

template class LargeRunAvx2<Depth8>;
template class LargeRunAvx2<Depth16>;
template class LargeRunAvx2<DepthFloat>;

}  // namespace streakfall

#pragma GCC pop_options
