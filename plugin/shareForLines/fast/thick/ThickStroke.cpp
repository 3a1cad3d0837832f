#include "shareForLines/fast/thick/ThickStroke.h"

#include "shareForLines/simd/Begin.h"

namespace streakfall {

// Limits the run's bounds to what its paint may change. False when that is nothing.
template <class Depth>
bool ThickStroke<Depth>::limitToUndone(Run& run, const Rows& rows) {
    const std::int32_t major = run.dabs.originMajor, minor = run.dabs.originMinor;
    ThickBounds& bounds = run.bounds;
    const auto [from, to] = bounds.places();
    std::int32_t p = from;
    bool any = false;
    for (; !run.isSteep() && p + lanes::kCount - 1 <= to; p += lanes::kCount) {
        const auto i = static_cast<std::size_t>(p - from);
        lanes::Ints first = lanes::load(&bounds.reachFrom[i]) + minor;
        lanes::Ints last = lanes::load(&bounds.reachTo[i]) + minor;
        rows.limitToUndone(p + major, first, last);
        for (std::int32_t n = 0; n < lanes::kCount; ++n) {
            bounds.limit(p + n, {first[n] - minor, last[n] - minor});
            any = any || first[n] <= last[n];
        }
    }
    for (; p <= to; ++p) {
        const Range reach = bounds.reachAt(p);
        if (run.isSteep() && !reach.empty()) {
            const Range left = rows.undone({reach.from + minor, reach.to + minor}, p + major);
            bounds.limit(p, {left.from - minor, left.to - minor});
        }
        any = any || !bounds.reachAt(p).empty();
    }
    return any;
}

// True when every pixel that the run may touch is plain for the pen.
template <class Depth>
bool ThickStroke<Depth>::isPlainEverywhere(const Run& run, const Rows& rows) const {
    const std::int32_t major = run.dabs.originMajor, minor = run.dabs.originMinor;
    const ThickBounds& bounds = run.bounds;
    const auto [from, to] = bounds.places();
    std::int32_t p = from;
    for (; !run.isSteep() && p + lanes::kCount - 1 <= to; p += lanes::kCount) {
        const auto i = static_cast<std::size_t>(p - from);
        if (!rows.arePlainColumns(p + major, lanes::load(&bounds.reachFrom[i]) + minor,
                                  lanes::load(&bounds.reachTo[i]) + minor)) {
            return false;
        }
    }
    for (; p <= to; ++p) {
        const Range reach = bounds.reachAt(p), across{reach.from + minor, reach.to + minor};
        if (!(run.isSteep() ? rows.isPlainRow(across, p + major)
                            : rows.isPlainColumn(p + major, across))) {
            return false;
        }
    }
    return true;
}

template <class Depth>
void ThickStroke<Depth>::paintSteepCore(const Run& run, const Rows& rows) const {
    const ThickDabs& dabs = run.dabs;
    const Range places = run.bounds.places();
    for (std::int32_t p = places.from; p <= places.to; ++p) {
        const Range core = run.bounds.coreAt(p);
        rows.paint({core.from + dabs.originMinor, core.to + dabs.originMinor},
                   p + dabs.originMajor);
    }
}

// Along x the core is known by columns; each row is filled from where it enters the core to where
// it leaves it.
template <class Depth>
void ThickStroke<Depth>::paintCore(const Run& run, const Rows& rows) {
    if (run.isSteep()) {
        paintSteepCore(run, rows);
        return;
    }
    const ThickDabs& dabs = run.dabs;
    const Range places = run.bounds.places();
    entered.resize(static_cast<std::size_t>(canvas.height));
    Range core = kNone;
    const auto leave = [&](std::int32_t from, std::int32_t to, std::int32_t place) {
        for (std::int32_t m = from; m <= to; ++m) {
            const std::int32_t y = m + dabs.originMinor;
            rows.paint({entered[static_cast<std::size_t>(y)], place - 1 + dabs.originMajor}, y);
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
    const Rows rows(canvas, shows, own);
    // Opaque straight lines seldom come to pixels of their own colour, and have few to look at.
    if ((!straight || own.alpha != Depth::kWhite) && !limitToUndone(run, rows)) {
        run.clear();
        return;
    }
    const bool hollow = run.dabs.anyHollow;
    // Whether the core is looked at pixel by pixel as well.
    const bool whole = run.rises() != 0 || (hollow && open.all()) ||
                       (own.alpha != Depth::kWhite && !isPlainEverywhere(run, rows));
    if (!whole && !(hollow && !open.empty())) {
        paintCore(run, rows);
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
    if (!whole) paintCore(run, rows);
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
