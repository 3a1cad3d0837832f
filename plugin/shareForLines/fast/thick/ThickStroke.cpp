#include "shareForLines/fast/thick/ThickStroke.h"

#include "shareForLines/fast/WholeRows.h"
#include "shareForLines/simd/Begin.h"

namespace streakfall {

// True when every pixel that the run may touch is plain for the pen.
template <class Depth>
bool ThickStroke<Depth>::isPlainEverywhere(const Run& run, const Pixel& pen) const {
    const ThickDabs& dabs = run.dabs;
    const Range places = run.bounds.places();
    for (std::int32_t p = places.from; p <= places.to; ++p) {
        const Range reach = run.bounds.reachAt(p);
        if (run.isSteep()) {
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
void ThickStroke<Depth>::paintSteepCore(const Run& run, const Pixel& pen) const {
    const ThickDabs& dabs = run.dabs;
    const Range places = run.bounds.places();
    for (std::int32_t p = places.from; p <= places.to; ++p) {
        const Range core = run.bounds.coreAt(p);
        mergeWholeRow<Depth>(canvas, shows, pen,
                             {core.from + dabs.originMinor, core.to + dabs.originMinor},
                             p + dabs.originMajor);
    }
}

// Along x the core is known by columns; each row is filled from where it enters the core to where
// it leaves it.
template <class Depth>
void ThickStroke<Depth>::paintCore(const Run& run, const Pixel& pen) {
    if (run.isSteep()) {
        paintSteepCore(run, pen);
        return;
    }
    const ThickDabs& dabs = run.dabs;
    const Range places = run.bounds.places();
    entered.resize(static_cast<std::size_t>(canvas.height));
    Range core = kNone;
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
        Range next = p <= places.to ? run.bounds.coreAt(p) : kNone;
        if (next.empty()) next = kNone;
        if (core.empty() || next.empty() || next.from > core.to || next.to < core.from) {
            leave(core.from, core.to, p);
            enter(next.from, next.to, p);
        } else {
            leave(core.from, next.from - 1, p);
            leave(next.to + 1, core.to, p);
            enter(next.from, core.from - 1, p);
            enter(core.to + 1, next.to, p);
        }
        core = next;
    }
}

template <class Depth>
void ThickStroke<Depth>::paintRim(Run& run, const Pixel& pen, const thick::Manner& manner) {
    thick::ThickRim<Depth> rim(canvas, shows, pen, run.dabs, run.bounds, run.held(), manner);
    kept.clear();
    rim.paint(run.dabs.anyHollow && !open.all() && !open.empty() ? &open : nullptr, kept);
}

// The rim of the run before, of which the core is painted.
template <class Depth>
void ThickStroke<Depth>::paintBefore(const Pixel& pen) {
    if (before->empty()) return;
    Pixel own = pen;
    own.alpha = before->highestAlpha();
    paintRim(*before, own, {.straight = straight});
    before->clear();
}

template <class Depth>
void ThickStroke<Depth>::endRun(const Pixel& pen) {
    Run& run = *now;
    if (run.empty()) return;
    run.place(canvas);
    Pixel own = pen;
    own.alpha = run.highestAlpha();
    const bool hollow = run.dabs.anyHollow;
    // Whether the core is looked at pixel by pixel as well.
    const bool whole = run.rises() != 0 || (hollow && open.all()) ||
                       (own.alpha != Depth::kWhite && !isPlainEverywhere(run, own));
    if (!whole && !(hollow && !open.empty())) {
        paintCore(run, own);
        paintBefore(pen);
        std::swap(now, before);
        return;
    }
    paintBefore(pen);
    paintRim(run, own,
             {.straight = straight,
              .whole = whole,
              .hollow = hollow && whole,
              .open = hollow && open.all(),
              .rising = run.rises()});
    if (!whole) paintCore(run, own);
    for (const KeptPixel<Depth>& pixel : kept) *pixel.at = pixel.value;
    run.clear();
}

template <class Depth>
void ThickStroke<Depth>::add(const Dab& dab, const Pixel& pen) {
    if (now->add(dab, pen.alpha, straight)) return;
    endRun(pen);
    now->add(dab, pen.alpha, straight);
}

template <class Depth>
void ThickStroke<Depth>::flush(const Pixel& pen) {
    endRun(pen);
    paintBefore(pen);
}

template class ThickStroke<Depth8>;
template class ThickStroke<Depth16>;
template class ThickStroke<DepthFloat>;

}  // namespace streakfall

#include "shareForLines/simd/End.h"
