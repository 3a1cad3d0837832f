#include "shareForLines/RunRowsAvx2.h"

#include <algorithm>
#include <bit>
#include <cmath>

#include "shareForLines/VectorsAvx2.h"

#pragma GCC push_options
#pragma GCC target("avx2")

namespace streakfall {
namespace {

using namespace avx2;

constexpr double kCoreInset = 1.6;     // interior for certain, pixels inside the circle
constexpr double kReach = 1.3;         // untouched for certain, pixels outside of it
constexpr double kFarthestEnd = 2.95;  // how far a slow end moves, below kHollowRim
constexpr float kNever = -1e30f;

// The union of intervals: least start, and least end negated.
struct Union {
    __m256 from, to;

    Union() : from(_mm256_set1_ps(1e9f)), to(_mm256_set1_ps(1e9f)) {}

    // x - chord to x + chord where chord2 is at least `least`; gives these lanes.
    __attribute__((always_inline)) unsigned take(__m256 x, __m256 chord2, float least) {
        const __m256 zero = _mm256_setzero_ps(), far = _mm256_set1_ps(1e9f);
        const __m256 valid = _mm256_cmp_ps(chord2, _mm256_set1_ps(least), _CMP_GE_OQ);
        const __m256 chord = _mm256_sqrt_ps(_mm256_max_ps(chord2, zero));
        from = _mm256_min_ps(from, _mm256_blendv_ps(far, _mm256_sub_ps(x, chord), valid));
        to = _mm256_min_ps(
            to, _mm256_blendv_ps(far, _mm256_sub_ps(zero, _mm256_add_ps(x, chord)), valid));
        return static_cast<unsigned>(_mm256_movemask_ps(valid));
    }

    static double least(__m256 v) {
        alignas(32) float lanes[kLanes];
        _mm256_store_ps(lanes, v);
        return static_cast<double>(*std::min_element(lanes, lanes + kLanes));
    }
    Range inward() const {
        return {truncToI32(std::ceil(least(from))), truncToI32(std::floor(-least(to)))};
    }
    Range outward() const {
        return {truncToI32(std::floor(least(from))), truncToI32(std::ceil(-least(to)))};
    }
};

}  // namespace

// Half the width of a row, squared, from which on its ends are slow.
float RunRowsAvx2::slowFrom2(const RunOfDabs& run, double r, double growth) {
    const double ux = std::fabs(run.directionX()), uy = std::fabs(run.directionY());
    // No hollow row is farther off the middle, and none narrower.
    const double offset = r - 2.0, half = std::sqrt(4.0 * r - 4.0);
    const double moves = ux + (uy * offset + growth * r) / half + (1.0 + offset / half) / 16.0;
    if (moves <= kFarthestEnd) return 1.0f;
    const double room = kFarthestEnd - ux - 1.0 / 16.0;
    const double slow = run.widest() * (uy + growth + 1.0 / 16.0) / room;
    return static_cast<float>(slow * slow + 1.0);
}

// reach, growth: largest radius, and of its changes, between the samples before and behind.
void RunRowsAvx2::addSample(const RunOfDabs& run, std::int32_t k, double reach, double growth) {
    const RunOfDabs::Entry& e = run[k];
    const double r = e.dab.radius, inner = r - kCoreInset;
    const double spread = stride * RunOfDabs::kMaxStep;
    // A point between two samples is nearer to one of them than this.
    const double outer = reach + kReach + spread * spread / (8.0 * reach);
    const auto i = static_cast<std::size_t>(count++);
    middleX[i] = static_cast<float>(e.shape.centre.xi + e.shape.centre.cx);
    middleY[i] = static_cast<float>(e.shape.centre.yi + e.shape.centre.cy);
    core2[i] = static_cast<float>(inner * inner);
    reach2[i] = static_cast<float>(outer * outer + 1.0);
    circle2[i] = static_cast<float>(r * r);
    slow2[i] = slowFrom2(run, r, growth);
    solidCore2[i] = e.dab.hollow ? kNever : core2[i];
}

void RunRowsAvx2::prepare(const RunOfDabs& run) {
    dabs = &run;
    count = 0;
    // Flatter circles leave less between samples.
    stride = std::clamp(truncToI32(std::sqrt(1.4 * run.narrowest())), kLeastStride, 16);
    const double half = 0.55 * stride + 1.0;
    leastChord2 = static_cast<float>(half * half);
    const std::int32_t last = run.count() - 1;
    double reachBefore = 0.0, growthBefore = 0.0;
    for (std::int32_t k = 0;;) {
        const std::int32_t next = std::min(k + stride, last);
        double reach = run[k].dab.radius, growth = 0.0;
        for (std::int32_t i = k; i < next; ++i) {
            reach = std::max(reach, run[i + 1].dab.radius);
            growth = std::max(growth, std::fabs(run[i + 1].dab.radius - run[i].dab.radius));
        }
        addSample(run, k, std::max(reach, reachBefore), std::max(growth, growthBefore));
        if (k == last) break;
        reachBefore = reach;
        growthBefore = growth;
        k = next;
    }
    for (std::int32_t n = count; n % kLanes != 0; ++n) {
        const auto i = static_cast<std::size_t>(n);
        middleX[i] = middleY[i] = 0.0f;
        core2[i] = reach2[i] = circle2[i] = solidCore2[i] = kNever;
        slow2[i] = -kNever;
    }
}

RunRow RunRowsAvx2::row(std::int32_t y) const {
    const Range near = dabs->nearRow(y);
    if (near.empty()) return {kNone, kNone, kNone};
    const bool hollow = dabs->hasHollow();
    Union core, reach, solid;
    std::int32_t firstSlow = -1, lastSlow = -1;
    const __m256 row = _mm256_set1_ps(static_cast<float>(y));
    const __m256 sign = _mm256_set1_ps(-0.0f);
    const std::int32_t end = std::min(near.to / stride + 2, count);
    for (std::int32_t n = near.from / stride / kLanes * kLanes; n < end; n += kLanes) {
        const auto i = static_cast<std::size_t>(n);
        const __m256 x = _mm256_load_ps(&middleX[i]);
        const __m256 dy = _mm256_sub_ps(row, _mm256_load_ps(&middleY[i]));
        const __m256 dy2 = _mm256_mul_ps(dy, dy);
        core.take(x, _mm256_sub_ps(_mm256_load_ps(&core2[i]), dy2), leastChord2);
        reach.take(x, _mm256_sub_ps(_mm256_load_ps(&reach2[i]), dy2), 0.0f);
        if (!hollow) continue;
        solid.take(x, _mm256_sub_ps(_mm256_load_ps(&solidCore2[i]), dy2), leastChord2);
        // The row's ends lie on the circle of the row beyond, too.
        const __m256 beyond = _mm256_add_ps(_mm256_andnot_ps(sign, dy), _mm256_set1_ps(1.1f));
        const __m256 chord2 =
            _mm256_sub_ps(_mm256_load_ps(&circle2[i]), _mm256_mul_ps(beyond, beyond));
        const auto slow = static_cast<unsigned>(
            _mm256_movemask_ps(_mm256_cmp_ps(chord2, _mm256_load_ps(&slow2[i]), _CMP_GE_OQ)));
        if (slow == 0) continue;
        if (firstSlow < 0) firstSlow = n + std::countr_zero(slow);
        lastSlow = n + 31 - std::countl_zero(slow);
    }
    RunRow parts{core.inward(), reach.outward(), kNone};
    if (!hollow) return parts;
    parts.unsure = parts.reach;
    if (firstSlow >= 0) {
        // Both samples' rows, and what rounding and quantised centres may add.
        for (const std::int32_t n : {firstSlow, lastSlow}) {
            const auto i = static_cast<std::size_t>(n);
            const double x = static_cast<double>(middleX[i]),
                         dy = y - static_cast<double>(middleY[i]);
            const double chord = std::sqrt(static_cast<double>(circle2[i]) - dy * dy) + 0.2;
            parts.unsure.from = std::max(parts.unsure.from, truncToI32(std::floor(x - chord)));
            parts.unsure.to = std::min(parts.unsure.to, truncToI32(std::ceil(x + chord)));
        }
    }
    const Range painted = solid.inward();
    if (painted.from <= parts.unsure.from && parts.unsure.to <= painted.to) parts.unsure = kNone;
    return parts;
}

}  // namespace streakfall

#pragma GCC pop_options
