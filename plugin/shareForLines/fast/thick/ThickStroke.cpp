#include "shareForLines/fast/thick/ThickStroke.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "shareForLines/fast/WholeRows.h"
#include "shareForLines/fast/thick/ThickRim.h"
#include "shareForLines/simd/Begin.h"

namespace streakfall {
namespace {

constexpr double kMostTurn = 0.85;  // least cosine of the turn from step to step of a wave
constexpr double kSameSpot = 1e-6;  // pixels

}  // namespace

template <class Depth>
bool ThickStroke<Depth>::goesOn(const Dab& dab) const {
    const Dab& before = held[static_cast<std::size_t>(count - 1)];
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
    const Dab& earlier = held[static_cast<std::size_t>(count - 2)];
    const double ex = before.x - earlier.x, ey = before.y - earlier.y;
    const double turn = ex * dx + ey * dy;
    return turn >= kMostTurn * std::sqrt((ex * ex + ey * ey) * step2);
}

template <class Depth>
bool ThickStroke<Depth>::add(const Dab& dab, typename Depth::Channel alpha) {
    if (count == ThickDabs::kCapacity) return false;
    if (count == 0) {
        advance = 0.0;
        rising = 0;
    } else {
        const auto last = heldAlphas[static_cast<std::size_t>(count - 1)];
        const std::int32_t rises = (alpha > last) - (alpha < last);
        if (rises * rising < 0 || !goesOn(dab)) return false;
        if (rises != 0) rising = rises;
        const Dab& before = held[static_cast<std::size_t>(count - 1)];
        const double dx = dab.x - before.x, dy = dab.y - before.y;
        if (advance == 0.0 && std::max(std::fabs(dx), std::fabs(dy)) > kSameSpot) {
            steep = std::fabs(dy) > std::fabs(dx);
            advance = (steep ? dy : dx) < 0.0 ? -1.0 : 1.0;
        }
    }
    heldAlphas[static_cast<std::size_t>(count)] = alpha;
    held[static_cast<std::size_t>(count++)] = dab;
    return true;
}

// True when every pixel that the run may touch is plain for the pen.
template <class Depth>
bool ThickStroke<Depth>::isPlainEverywhere(const Pixel& pen) const {
    const Range places = bounds.places();
    for (std::int32_t p = places.from; p <= places.to; ++p) {
        const Range reach = bounds.reachAt(p);
        if (steep) {
            const Range columns{reach.from + dabs.originMinor, reach.to + dabs.originMinor};
            if (!arePlain<Depth>(canvas, pen, columns, p + dabs.originMajor)) return false;
            continue;
        }
        for (std::int32_t m = reach.from; m <= reach.to; ++m) {
            if (!isPlain<Depth>(canvas.row<Depth>(m + dabs.originMinor)[p + dabs.originMajor],
                                pen)) {
                return false;
            }
        }
    }
    return true;
}

template <class Depth>
void ThickStroke<Depth>::paintSteepCore(const Pixel& pen) const {
    const Range places = bounds.places();
    for (std::int32_t p = places.from; p <= places.to; ++p) {
        const Range core = bounds.coreAt(p);
        mergeWholeRow<Depth>(canvas, shows, pen,
                             {core.from + dabs.originMinor, core.to + dabs.originMinor},
                             p + dabs.originMajor);
    }
}

// Along x the core is known by columns; each row is filled from where it enters the core to where
// it leaves it.
template <class Depth>
void ThickStroke<Depth>::paintCore(const Pixel& pen) {
    if (steep) {
        paintSteepCore(pen);
        return;
    }
    const Range places = bounds.places();
    entered.resize(static_cast<std::size_t>(canvas.height));
    Range before = kNone;
    const auto leave = [&](std::int32_t from, std::int32_t to, std::int32_t place) {
        for (std::int32_t m = from; m <= to; ++m) {
            const std::int32_t y = m + dabs.originMinor;
            mergeWholeRow<Depth>(
                canvas, shows, pen,
                {entered[static_cast<std::size_t>(y)], place - 1 + dabs.originMajor}, y);
        }
    };
    const auto enter = [&](std::int32_t from, std::int32_t to, std::int32_t place) {
        for (std::int32_t m = from; m <= to; ++m) {
            entered[static_cast<std::size_t>(m + dabs.originMinor)] = place + dabs.originMajor;
        }
    };
    for (std::int32_t p = places.from; p <= places.to + 1; ++p) {
        Range now = p <= places.to ? bounds.coreAt(p) : kNone;
        if (now.empty()) now = kNone;
        if (before.empty() || now.empty() || now.from > before.to || now.to < before.from) {
            leave(before.from, before.to, p);
            enter(now.from, now.to, p);
        } else {
            leave(before.from, now.from - 1, p);
            leave(now.to + 1, before.to, p);
            enter(now.from, before.from - 1, p);
            enter(before.to + 1, now.to, p);
        }
        before = now;
    }
}

template <class Depth>
void ThickStroke<Depth>::place() {
    const auto n = static_cast<std::size_t>(count);
    for (std::size_t i = 0; i < n; ++i) {
        payloads[i] = 0;
        std::memcpy(&payloads[i], &heldAlphas[i], sizeof heldAlphas[i]);
    }
    dabs.place({held.data(), n}, {payloads.data(), n}, steep);
}

template <class Depth>
void ThickStroke<Depth>::findBounds() {
    const std::int32_t originX = steep ? dabs.originMinor : dabs.originMajor;
    const std::int32_t originY = steep ? dabs.originMajor : dabs.originMinor;
    const Range x{-originX, canvas.width - 1 - originX};
    const Range y{-originY, canvas.height - 1 - originY};
    bounds.find(dabs, straight, steep ? y : x, steep ? x : y);
}

template <class Depth>
void ThickStroke<Depth>::flush(const Pixel& pen) {
    if (count == 0) return;
    place();
    findBounds();
    Pixel own = pen;
    own.alpha = rising < 0 ? heldAlphas[0] : heldAlphas[static_cast<std::size_t>(count - 1)];
    const bool hollow = dabs.anyHollow;
    // Whether the core is looked at pixel by pixel as well.
    const bool whole = rising != 0 || (hollow && open.all()) ||
                       (own.alpha != Depth::kWhite && !isPlainEverywhere(own));
    const thick::Manner manner{.straight = straight,
                               .whole = whole,
                               .hollow = hollow && whole,
                               .open = hollow && open.all(),
                               .rising = rising};
    const std::span<const Dab> run{held.data(), static_cast<std::size_t>(count)};
    thick::ThickRim<Depth> rim(canvas, shows, own, dabs, bounds, run, manner);
    kept.clear();
    rim.paint(hollow && !open.all() && !open.empty() ? &open : nullptr, kept);
    if (!whole) paintCore(own);
    for (const KeptPixel<Depth>& pixel : kept) *pixel.at = pixel.value;
    count = 0;
}

template class ThickStroke<Depth8>;
template class ThickStroke<Depth16>;
template class ThickStroke<DepthFloat>;

}  // namespace streakfall

#include "shareForLines/simd/End.h"
