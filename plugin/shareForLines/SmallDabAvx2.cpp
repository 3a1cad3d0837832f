#include "shareForLines/SmallDabAvx2.h"

#include <algorithm>
#include <cmath>
#include <type_traits>

#include "shareForLines/RowMergeAvx2.h"
#include "shareForLines/SmallDabBox.h"

// Only what is defined from here on may use the wider instructions.
#pragma GCC push_options
#pragma GCC target("avx2")

namespace streakfall {
namespace {

using namespace avx2;

// The closed form counts in 4096ths of a column.
constexpr double kFine = 4096.0;
// Nearer to a column's edge than this, in 4096ths, a pixel takes the exact way. The error of
// single precision stays below a tenth of it for radii of 0.5 and above; below, both grow with
// 1 / r.
constexpr double kGuard = 0.5;
// Below this radius the closed form is too steep for single precision.
constexpr double kSteepRadius = 0.05;
// Dabs nearer to each other than this, in place and radius, move the closed form by less than a
// hundredth of the guard.
constexpr double kTwin = 1e-9;

// The exact way for one row: the chain of additions from the corner of the box.
__attribute__((noinline)) void exactColumns(const SmallDabBox& box, const Dab& dab,
                                            std::int32_t line, std::int32_t* columns) {
    DistanceChain chain(box, dab.x, dab.y, dab.radius);
    for (std::int32_t above = box.ya; above < line; ++above) chain.nextRow();
    for (std::int32_t i = box.xa; i <= box.xb; ++i) {
        columns[i - box.xa] = coverageColumn(chain.nextPixel());
    }
}

}  // namespace

template <class Depth>
void SmallDabAvx2<Depth>::prepare(double r, typename Depth::Channel alpha) {
    CoverageBlend w;
    setCoverageBlend(w, r);
    for (std::int32_t c = 0; c < kCoverageColumns; c += kLanes) {
        __m256i g = blendRows(w, c);
        if constexpr (std::is_same_v<Depth, Depth8>) {
            if (alpha != Depth8::kWhite) g = coverAlpha8(g, alpha);
        }
        storeBytes(g, &paint_[static_cast<std::size_t>(c)]);
    }
    if constexpr (!std::is_same_v<Depth, Depth8>) alphas.set(alpha);
    radius = r;
    penAlpha = alpha;
}

// Keeps the window where it is while the box fits: a vector read from where the dab before wrote
// one need not wait until that has reached the cache.
template <class Depth>
void SmallDabAvx2<Depth>::placeWindow(const SmallDabBox& box, std::int32_t size,
                                      std::int32_t width) {
    if (box.xa >= windowLeft && box.xb < windowLeft + size) return;
    // Ahead of a pen that moves right, behind of one that moves left.
    windowLeft = box.xa < windowLeft ? box.xb - size + 1 : box.xa;
    windowLeft = std::max(0, std::min(windowLeft, std::max(width - size, 0)));
}

template <class Depth>
template <int kBlocks>
void SmallDabAvx2<Depth>::paintRows(LineCanvas& canvas, const Pixel& pen, const Dab& dab,
                                    const SmallDabBox& box, const Dab* twin) {
    // Column in 4096ths: (8 / r) (p^2 + q^2) - 8 r + 16.5, times 4096.
    const double r = dab.radius;
    const double scale = kFine * 8.0 / r;
    const double base = kFine * (16.5 - 8.0 * r);
    const bool steep = r < kSteepRadius;
    const auto guard = static_cast<std::int32_t>(kGuard * (1.0 + 1.0 / (steep ? 1.0 : r))) + 1;
    const __m256i guards = _mm256_set1_epi32(guard);
    const __m256i span = _mm256_set1_epi32(2 * guard);
    const __m256i fraction = _mm256_set1_epi32(4095);
    // Limited to columns 0.5 to 31.5: beyond them there is no edge to miss.
    const __m256 lowest = _mm256_set1_ps(static_cast<float>(0.5 * kFine));
    const __m256 highest = _mm256_set1_ps(static_cast<float>(31.5 * kFine));
    placeWindow(box, kBlocks * kLanes, canvas.width);
    const std::int32_t left = windowLeft;
    __m256 across[kBlocks];
    __m256i lanes[kBlocks], keep[kBlocks];
    for (int i = 0; i < kBlocks; ++i) {
        const __m256 p =
            _mm256_add_ps(_mm256_setr_ps(0, 1, 2, 3, 4, 5, 6, 7),
                          _mm256_set1_ps(static_cast<float>(left + i * kLanes - dab.x)));
        across[i] = _mm256_mul_ps(_mm256_mul_ps(p, p), _mm256_set1_ps(static_cast<float>(scale)));
        lanes[i] = lanesBetween(box.xa - left - i * kLanes, box.xb - left - i * kLanes);
        keep[i] = _mm256_and_si256(lanes[i], _mm256_set1_epi32(0xFF));
    }
    const __m256i lowPaint = halfTable(paint_.data()), highPaint = halfTable(paint_.data() + 16);
    const bool room = left + kBlocks * kLanes <= canvas.width;
    const RowMerge<Depth> merge{pen, alphas};
    auto* row = reinterpret_cast<unsigned char*>(canvas.row<Depth>(box.ya) + left);
    const double y = dab.y;
    for (std::int32_t line = box.ya; line <= box.yb; ++line, row += canvas.rowBytes) {
        const double q = line - y;
        const __m256 down = _mm256_set1_ps(static_cast<float>(scale * (q * q) + base));
        __m256i columns[kBlocks];
        __m256i near = _mm256_setzero_si256();
        for (int i = 0; i < kBlocks; ++i) {
            const __m256i fine = _mm256_cvtps_epi32(
                _mm256_min_ps(_mm256_max_ps(_mm256_add_ps(across[i], down), lowest), highest));
            const __m256i rest = _mm256_and_si256(_mm256_add_epi32(fine, guards), fraction);
            near =
                _mm256_or_si256(near, _mm256_and_si256(_mm256_cmpgt_epi32(span, rest), lanes[i]));
            columns[i] = _mm256_srli_epi32(fine, 12);
        }
        Pixel* pixels = reinterpret_cast<Pixel*>(row);
        const auto mergeColumns = [&](const __m256i* found, int times)
            __attribute__((always_inline)) {
            for (int i = 0; i < kBlocks; ++i) {
                const __m256i paint =
                    _mm256_and_si256(lookUp(lowPaint, highPaint, found[i]), keep[i]);
                merge(pixels + i * kLanes, std::min(canvas.width - left - i * kLanes, kLanes), room,
                      paint, times);
            }
        };
        if (_mm256_testz_si256(near, near) != 0 && !steep) [[likely]] {
            mergeColumns(columns, twin != nullptr ? 2 : 1);
            continue;
        }
        for (const Dab* each : {&dab, twin}) {
            if (each == nullptr) continue;
            alignas(32) std::int32_t exact[kBlocks * kLanes] = {};
            exactColumns(box, *each, line, exact + (box.xa - left));
            for (int i = 0; i < kBlocks; ++i) columns[i] = load(exact + i * kLanes);
            mergeColumns(columns, 1);
        }
    }
}

template <class Depth>
void SmallDabAvx2<Depth>::paintHeld(LineCanvas& canvas, const Pixel& pen, const Dab* twin) {
    holds = false;
    if (held.radius != radius || pen.alpha != penAlpha) prepare(held.radius, pen.alpha);
    if (heldBox.xb - heldBox.xa < kLanes) {
        paintRows<1>(canvas, pen, held, heldBox, twin);
    } else {
        paintRows<2>(canvas, pen, held, heldBox, twin);
    }
}

// A dab that differs from the held one by rounding alone: the same box, the same coverage by
// column, and a place so near that only the exact way could tell the two apart.
template <class Depth>
bool SmallDabAvx2<Depth>::isTwin(const Dab& dab, const SmallDabBox& itsBox) const {
    if (std::fabs(dab.x - held.x) > kTwin || std::fabs(dab.y - held.y) > kTwin ||
        std::fabs(dab.radius - held.radius) > kTwin || !(itsBox == heldBox)) {
        return false;
    }
    CoverageBlend one, other;
    setCoverageBlend(one, held.radius);
    setCoverageBlend(other, dab.radius);
    return one.rowLow == other.rowLow && one.weightHigh == other.weightHigh;
}

template <class Depth>
void SmallDabAvx2<Depth>::paint(LineCanvas& canvas, const Pixel& pen, const Dab& dab) {
    SmallDabBox itsBox;
    if (!itsBox.place(dab.x, dab.y, dab.radius, canvas.width, canvas.height)) return;
    if (holds && isTwin(dab, itsBox)) {
        paintHeld(canvas, pen, &dab);
        return;
    }
    flush(canvas, pen);
    held = dab;
    heldBox = itsBox;
    holds = true;
}

template <class Depth>
void SmallDabAvx2<Depth>::flush(LineCanvas& canvas, const Pixel& pen) {
    if (holds) paintHeld(canvas, pen, nullptr);
}

template class SmallDabAvx2<Depth8>;
template class SmallDabAvx2<Depth16>;
template class SmallDabAvx2<DepthFloat>;

}  // namespace streakfall

#pragma GCC pop_options
