#include "shareForLines/LargeDabAvx2.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdlib>
#include <type_traits>

#include "shareForLines/DabPainter.h"
#include "shareForLines/HollowRow.h"
#include "shareForLines/LargeDabLanesAvx2.h"

#pragma GCC push_options
#pragma GCC target("avx2")

namespace streakfall {
namespace {

using namespace avx2;

// The lanes of a 64-pixel row that a hollow dab leaves open, given its interior ones.
inline std::uint64_t openLanes(std::uint64_t interior, std::int32_t rowDepth) {
    if (interior == 0) return 0;
    const std::int32_t a = std::countr_zero(interior), b = 63 - std::countl_zero(interior);
    if (fillsWholeRow(a, b, rowDepth)) return 0;
    const std::uint64_t upToEnd = (std::uint64_t{1} << (b - kHollowRim + 1)) - 1;
    return upToEnd & ~((std::uint64_t{1} << (a + kHollowRim)) - 1);
}

inline __m256i lanesOfBits(std::uint64_t bits, std::int32_t block) {
    const __m256i bit = _mm256_setr_epi32(1, 2, 4, 8, 16, 32, 64, 128);
    const __m256i all = _mm256_set1_epi32(static_cast<int>(bits >> (8 * block) & 0xFF));
    return _mm256_cmpeq_epi32(_mm256_and_si256(all, bit), bit);
}

}  // namespace

template <class Depth>
void LargeDabAvx2<Depth>::paintRow(LineCanvas& canvas, const Pixel& pen, std::int32_t y,
                                   bool hollow) {
    const double dy = y - shape.centre.yi - shape.centre.cy;
    const double reach = radius + 1.1;
    const double chord2 = reach * reach - dy * dy;
    if (chord2 < 0.0) return;
    const double chord = std::sqrt(chord2), middle = shape.centre.xi + shape.centre.cx;
    const std::int32_t from = std::max(static_cast<std::int32_t>(std::floor(middle - chord)), 0);
    const std::int32_t to =
        std::min(static_cast<std::int32_t>(std::ceil(middle + chord)), canvas.width - 1);
    if (from > to) return;

    const std::int32_t blocks = (to - from) / kLanes + 1;
    LanesOfDab lanes[kBlocks];
    std::uint64_t interior = 0;
    for (std::int32_t i = 0; i < blocks; ++i) {
        lanes[i] = coverLanes(shape, coverage.data(), from + i * kLanes, y);
        const auto bits = static_cast<unsigned>(_mm256_movemask_ps(
            _mm256_castsi256_ps(_mm256_cmpgt_epi32(lanes[i].coverage, _mm256_set1_epi32(255)))));
        interior |= std::uint64_t{bits} << (8 * i);
    }
    // Nothing counts beyond the buffer's end.
    const std::int32_t width = to - from + 1;
    if (width < 64) interior &= (std::uint64_t{1} << width) - 1;
    const std::int32_t rowDepth = truncToI32(radius + 5.0) - 5 - std::abs(y - shape.centre.yi);
    const std::uint64_t open = hollow ? openLanes(interior, rowDepth) : 0;

    const RowMerge<Depth> merge{pen, alphas};
    Pixel* pixels = canvas.row<Depth>(y) + from;
    for (std::int32_t i = 0; i < blocks; ++i, pixels += kLanes) {
        const std::int32_t count = std::min(width - i * kLanes, kLanes);
        __m256i paint = _mm256_andnot_si256(lanesOfBits(open, i), lanes[i].coverage);
        paint = _mm256_and_si256(paint, firstLanes(count));
        if (_mm256_testz_si256(paint, paint) != 0) continue;
        if constexpr (std::is_same_v<Depth, Depth8>) {
            // At coverage 255 the pen's alpha is its own.
            paint = coverAlpha8(_mm256_min_epi32(paint, _mm256_set1_epi32(255)), pen.alpha);
        }
        const bool room = from + (i + 1) * kLanes <= canvas.width;
        merge(pixels, count, room, paint, 1);
        const __m256i again = _mm256_and_si256(paint, lanes[i].twice);
        if (_mm256_testz_si256(again, again) == 0) merge(pixels, count, room, again, 1);
    }
}

template <class Depth>
void LargeDabAvx2<Depth>::paint(LineCanvas& canvas, const Pixel& pen, const Dab& dab) {
    if (dab.radius > kMaxRadius || !shape.place(dab.x, dab.y, dab.radius)) {
        paintDab<Depth>(canvas, pen, dab);
        return;
    }
    if (dab.radius != radius) {
        radius = dab.radius;
        CoverageBlend w;
        setCoverageBlend(w, radius);
        coverageTable(w, coverage.data());
    }
    if constexpr (!std::is_same_v<Depth, Depth8>) alphas.set(pen.alpha);
    const std::int32_t middle = shape.centre.yi, reach = truncToI32(radius) + 3;
    const std::int32_t top = std::max(middle - reach, 0);
    const std::int32_t bottom = std::min(middle + reach, canvas.height - 1);
    for (std::int32_t y = top; y <= bottom; ++y) paintRow(canvas, pen, y, dab.hollow);
}

template class LargeDabAvx2<Depth8>;
template class LargeDabAvx2<Depth16>;
template class LargeDabAvx2<DepthFloat>;

}  // namespace streakfall

#pragma GCC pop_options
