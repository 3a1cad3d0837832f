#include "shareForLines/fast/thick/ThickRun.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "shareForLines/canvas/PixelDepth.h"
#include "shareForLines/simd/Begin.h"

namespace streakfall {
namespace {

constexpr double kMostTurn = 0.85;  // least cosine of the turn from step to step of a wave
constexpr double kSameSpot = 1e-6;  // pixels

}  // namespace

template <class Depth>
bool ThickRun<Depth>::goesOn(const Dab& dab) const {
    const Dab& before = all[static_cast<std::size_t>(count - 1)];
    const double dx = dab.x - before.x, dy = dab.y - before.y;
    const double step2 = dx * dx + dy * dy;
    if (!(step2 <= ThickDabs::kMaxStep * ThickDabs::kMaxStep) ||
        !(std::fabs(dab.radius - before.radius) <= ThickDabs::kMaxGrowth)) {
        return false;
    }
    if (step2 < kSameSpot * kSameSpot || advance == 0.0) return true;
    const double along = advance * (steep ? dy : dx);
    if (along * along < ThickDabs::kLeastAdvance * ThickDabs::kLeastAdvance * step2 || along < 0.0)
        return false;
    if (straight || count < 2) return true;
    const Dab& earlier = all[static_cast<std::size_t>(count - 2)];
    const double ex = before.x - earlier.x, ey = before.y - earlier.y;
    const double turn = ex * dx + ey * dy;
    return turn >= kMostTurn * std::sqrt((ex * ex + ey * ey) * step2);
}

template <class Depth>
bool ThickRun<Depth>::add(const Dab& dab, Channel alpha, bool straightLine) {
    if (count == ThickDabs::kCapacity) return false;
    if (count == 0) {
        straight = straightLine;
        advance = 0.0;
        rising = 0;
    } else {
        const Channel last = alphas[static_cast<std::size_t>(count - 1)];
        const std::int32_t change = (alpha > last) - (alpha < last);
        if (change * rising < 0 || !goesOn(dab)) return false;
        if (change != 0) rising = change;
        const Dab& before = all[static_cast<std::size_t>(count - 1)];
        const double dx = dab.x - before.x, dy = dab.y - before.y;
        if (advance == 0.0 && std::max(std::fabs(dx), std::fabs(dy)) > kSameSpot) {
            steep = std::fabs(dy) > std::fabs(dx);
            advance = (steep ? dy : dx) < 0.0 ? -1.0 : 1.0;
        }
    }
    alphas[static_cast<std::size_t>(count)] = alpha;
    all[static_cast<std::size_t>(count++)] = dab;
    return true;
}

template <class Depth>
void ThickRun<Depth>::place(const CanvasView& canvas) {
    const auto n = static_cast<std::size_t>(count);
    for (std::size_t i = 0; i < n; ++i) {
        payloads[i] = 0;
        std::memcpy(&payloads[i], &alphas[i], sizeof alphas[i]);
    }
    dabs.place(held(), {payloads.data(), n}, steep);
    const std::int32_t originX = steep ? dabs.originMinor : dabs.originMajor;
    const std::int32_t originY = steep ? dabs.originMajor : dabs.originMinor;
    const Range x{-originX, canvas.width - 1 - originX};
    const Range y{-originY, canvas.height - 1 - originY};
    bounds.find(dabs, straight, steep ? y : x, steep ? x : y);
}

template class ThickRun<Depth8>;
template class ThickRun<Depth16>;
template class ThickRun<DepthFloat>;

}  // namespace streakfall

#include "shareForLines/simd/End.h"
