#include "shareForLines/ThickStrokeAvx2.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

#include "shareForLines/PenPixels.h"
#include "shareForLines/ThickRimAvx2.h"

#pragma GCC push_options
#pragma GCC target("avx2")

namespace streakfall {
namespace {

constexpr std::int32_t kShortRun = 8;   // shorter ones are painted dab by dab
constexpr double kRegularRadius = 6.5;  // from here on every dab is what LargeDabShape tells
constexpr double kMostTurn = 0.85;      // least cosine of the turn from step to step of a wave
constexpr double kSameSpot = 1e-6;      // pixels

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
    if (isStraight || count < 2) return true;
    const Dab& earlier = held[static_cast<std::size_t>(count - 2)];
    const double ex = before.x - earlier.x, ey = before.y - earlier.y;
    const double turn = ex * dx + ey * dy;
    return turn >= kMostTurn * std::sqrt((ex * ex + ey * ey) * step2);
}

template <class Depth>
bool ThickStroke<Depth>::add(const Dab& dab, typename Depth::Channel alpha) {
    if (dab.radius > ThickDabs::kMaxRadius || count == ThickDabs::kCapacity) return false;
    if (dab.radius < kRegularRadius) {
        LargeDabShape shape;
        if (!shape.place(dab.x, dab.y, dab.radius)) return false;
    }
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

// True when some pixel that the run may touch holds another colour.
template <class Depth>
bool ThickStroke<Depth>::meetsOthers(const LineCanvas& canvas, const Pixel& pen) const {
    const Range places = bounds.places();
    if (steep) {
        for (std::int32_t p = places.from; p <= places.to; ++p) {
            const Range reach = bounds.reachAt(p);
            if (meetsOtherColors<Depth>(
                    canvas, pen, Range{reach.from + dabs.originMinor, reach.to + dabs.originMinor},
                    p + dabs.originMajor)) {
                return true;
            }
        }
        return false;
    }
    for (std::int32_t p = places.from; p <= places.to; ++p) {
        const Range reach = bounds.reachAt(p);
        for (std::int32_t m = reach.from; m <= reach.to; ++m) {
            const Pixel& pixel = canvas.row<Depth>(m + dabs.originMinor)[p + dabs.originMajor];
            if (pixel.alpha != 0 &&
                (pixel.red != pen.red || pixel.green != pen.green || pixel.blue != pen.blue)) {
                return true;
            }
        }
    }
    return false;
}

// Along x the core is known by columns; each row is filled from where it enters the core to where
// it leaves it.
template <class Depth>
void ThickStroke<Depth>::paintCore(LineCanvas& canvas, const Pixel& pen) const {
    const Range places = bounds.places();
    if (steep) {
        for (std::int32_t p = places.from; p <= places.to; ++p) {
            const Range core = bounds.coreAt(p);
            mergeWholeRow<Depth>(canvas, pen,
                                 {core.from + dabs.originMinor, core.to + dabs.originMinor},
                                 p + dabs.originMajor);
        }
        return;
    }
    std::vector<std::int32_t> entered(static_cast<std::size_t>(canvas.height));
    Range before = kNone;
    const auto leave = [&](std::int32_t from, std::int32_t to, std::int32_t place) {
        for (std::int32_t m = from; m <= to; ++m) {
            const std::int32_t y = m + dabs.originMinor;
            mergeWholeRow<Depth>(
                canvas, pen, {entered[static_cast<std::size_t>(y)], place - 1 + dabs.originMajor},
                y);
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
void ThickStroke<Depth>::flush(LineCanvas& canvas, const Pixel& pen, LargeDabAvx2<Depth>& single) {
    bool byDabs = count < kShortRun;
    everything = rising != 0;
    if (!byDabs) {
        const auto n = static_cast<std::size_t>(count);
        for (std::size_t i = 0; i < n; ++i) {
            payloads[i] = 0;
            std::memcpy(&payloads[i], &heldAlphas[i], sizeof heldAlphas[i]);
        }
        dabs.place({held.data(), n}, {payloads.data(), n}, steep);
    }
    Pixel own = pen;
    if (!byDabs) {
        own.alpha = rising < 0 ? heldAlphas[0] : heldAlphas[static_cast<std::size_t>(count - 1)];
        const Range x{-(steep ? dabs.originMinor : dabs.originMajor),
                      canvas.width - 1 - (steep ? dabs.originMinor : dabs.originMajor)};
        const Range y{-(steep ? dabs.originMajor : dabs.originMinor),
                      canvas.height - 1 - (steep ? dabs.originMajor : dabs.originMinor)};
        bounds.find(dabs, isStraight, steep ? y : x, steep ? x : y);
        everything = everything || (dabs.anyHollow && open->all()) ||
                     (own.alpha != Depth::kWhite && meetsOthers(canvas, own));
    }
    if (byDabs) {
        for (std::size_t k = 0; k < static_cast<std::size_t>(count); ++k) {
            own.alpha = heldAlphas[k];
            single.paint(canvas, own, held[k]);
        }
    } else {
        const std::span<const Dab> run{held.data(), static_cast<std::size_t>(count)};
        const thick::Manner manner{.straight = isStraight,
                                   .whole = everything,
                                   .hollow = dabs.anyHollow && everything,
                                   .open = dabs.anyHollow && open->all(),
                                   .rising = rising};
        const bool some = dabs.anyHollow && !open->all() && !open->empty();
        kept.clear();
        thick::ThickRim<Depth>(canvas, own, dabs, bounds, run, manner)
            .paint(some ? open : nullptr, kept);
        if (!everything) paintCore(canvas, own);
        for (const KeptPixel<Depth>& pixel : kept) *pixel.at = pixel.value;
    }
    count = 0;
}

template class ThickStroke<Depth8>;
template class ThickStroke<Depth16>;
template class ThickStroke<DepthFloat>;

}  // namespace streakfall

#pragma GCC pop_options
