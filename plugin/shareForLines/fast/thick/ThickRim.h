// ThickRim: the pixels of a run of dabs that must be looked at one by one, eight neighbouring
// places along the major axis at a time: those at its edge, or all of them where the core is not
// plain.
//
// Owner: the painter of a run, for that long. Needs a processor with AVX2.
#pragma once

#include <algorithm>
#include <bit>
#include <cstdint>
#include <span>

#include "shareForLines/canvas/CanvasView.h"
#include "shareForLines/fast/OpenPixels.h"
#include "shareForLines/fast/OrderOfPaint.h"
#include "shareForLines/fast/WhatShows.h"
#include "shareForLines/fast/thick/ThickBounds.h"
#include "shareForLines/fast/thick/ThickMerge.h"
#include "shareForLines/fast/thick/ThickPlot.h"
#include "shareForLines/fast/thick/ThickWindow.h"
#include "shareForLines/simd/Begin.h"

namespace streakfall::thick {

using namespace lanes;

// How a run is painted.
struct Manner {
    bool straight = true;     // its dabs lie on a line
    bool whole = false;       // the core is looked at as well
    bool hollow = false;      // hollow dabs are looked at as such
    bool open = false;        // they may leave pixels open anywhere
    std::int32_t rising = 0;  // 1 or -1 when alphas rise or fall along the way, else 0
};

template <class Depth>
class ThickRim {
  public:
    using Pixel = typename Depth::Pixel;

    // All outlive it. linePen: its alpha is the highest of the run.
    ThickRim(const CanvasView& view, const WhatShows& visible, const Pixel& linePen,
             ThickDabs& entries, const ThickBounds& limits, std::span<const Dab> run,
             const Manner& how)
        : canvas(view),
          shows(visible),
          pen(linePen),
          dabs(entries),
          bounds(limits),
          manner(how),
          plot(entries, view.width),
          window(entries, run, how.straight),
          merges(entries, plot, window, linePen, how.rising) {}

    // What hollow dabs leave of the pixels of `open` is put into `kept`, to be written in the end;
    // they are painted like all others. open may be null.
    void paint(const OpenPixels* open, std::vector<KeptPixel<Depth>>& kept) {
        const Range places = bounds.places();
        std::int32_t near = dabs.begin(), far = near, middle = near;
        for (std::int32_t place = places.from; place <= places.to; place += kCount) {
            // Feet move on with the places.
            for (; middle < dabs.end() - 1 &&
                   dabs.major[ThickDabs::at(middle)] < static_cast<float>(place);
                 ++middle) {
                ++near;
                ++far;
            }
            if (window.moveTo(place)) {
                const std::int32_t n = std::min(places.to - place + 1, kCount);
                highest = merges.highestAlpha(window.offsets());
                if (open != nullptr) keepOpen(place, n, *open, kept);
                paintPlaces(place, n, near, far);
            }
        }
    }

  private:
    using Eight = Pixels8<Depth>;

    // Entries around the foot that must have one radius for the quick way.
    static constexpr std::int32_t kOneRadius = 24;

    // near, far: where the feet of the pixels on the two sides were found last.
    void paintPlaces(std::int32_t place, std::int32_t n, std::int32_t& near, std::int32_t& far) {
        const auto i = static_cast<std::size_t>(place - bounds.places().from);
        const Ints used = kIota < lanes::all(n);
        const Ints reachFrom = lanes::load(&bounds.reachFrom[i]);
        const Ints reachTo = where(used, lanes::load(&bounds.reachTo[i]), reachFrom - 1);
        const Ints coreFrom = lanes::load(&bounds.coreFrom[i]);
        const Ints coreTo = lanes::load(&bounds.coreTo[i]);
        if (manner.whole) {
            forPixels(place, reachFrom, reachTo, [&](Eight& e) {
                paintAny(e, bits((e.minor >= coreFrom) & (e.minor <= coreTo)), near);
            });
            return;
        }
        const Ints solid = used & (coreFrom <= coreTo);
        forPixels(place, reachFrom, where(solid, coreFrom - 1, reachTo),
                  [&](Eight& e) { paintEdge(e, near); });
        forPixels(place, where(solid, coreTo + 1, reachTo + 1), reachTo,
                  [&](Eight& e) { paintEdge(e, far); });
    }

    void keepOpen(std::int32_t place, std::int32_t n, const OpenPixels& open,
                  std::vector<KeptPixel<Depth>>& kept) {
        const auto first = static_cast<std::size_t>(place - bounds.places().from);
        const auto last = first + static_cast<std::size_t>(n);
        const auto from =
            *std::min_element(bounds.reachFrom.begin() + static_cast<std::ptrdiff_t>(first),
                              bounds.reachFrom.begin() + static_cast<std::ptrdiff_t>(last));
        const auto to =
            *std::max_element(bounds.reachTo.begin() + static_cast<std::ptrdiff_t>(first),
                              bounds.reachTo.begin() + static_cast<std::ptrdiff_t>(last));
        const std::int32_t major = place + dabs.originMajor;
        Eight e;
        e.place = lanes::all(place) + kIota;
        for (std::int32_t m = from; m <= to; ++m) {
            const std::int32_t minor = m + dabs.originMinor;
            e.active = (dabs.isSteep() ? open.down(minor, major) : open.across(major, minor)) &
                       ((1u << n) - 1);
            if (e.active == 0) continue;
            e.minor = lanes::all(m);
            gather(e);
            if (e.active == 0) continue;
            e.find();
            Pixel values[kCount];
            Pixel* places[kCount];
            for (unsigned rest = e.active; rest != 0; rest &= rest - 1) {
                const int i = std::countr_zero(rest);
                values[i] = *e.at[i];
                places[i] = e.at[i];
                e.at[i] = &values[i];
            }
            merges.template replay<true>(e, e.active, false);
            for (unsigned rest = e.active; rest != 0; rest &= rest - 1) {
                const int i = std::countr_zero(rest);
                kept.push_back({places[i], values[i]});
            }
        }
    }

    // From one minor coordinate to another, each lane its own, both included.
    template <class Paint>
    void forPixels(std::int32_t place, Ints from, Ints to, Paint paintThem) {
        Eight e;
        e.place = lanes::all(place) + kIota;
        for (Ints minor = from; any(minor <= to); minor += 1) {
            e.active = bits(minor <= to);
            e.minor = where(minor <= to, minor, from);
            gather(e);
            if (e.active == 0) continue;
            e.find();
            paintThem(e);
        }
    }

    // Finds the pixels; those that the pen cannot change are no longer active.
    void gather(Eight& e) {
        alignas(32) std::int32_t place[kCount], minor[kCount];
        lanes::store(place, e.place + dabs.originMajor);
        lanes::store(minor, e.minor + dabs.originMinor);
        e.foreign = 0;
        for (unsigned rest = e.active; rest != 0; rest &= rest - 1) {
            const int i = std::countr_zero(rest);
            const std::int32_t x = dabs.isSteep() ? minor[i] : place[i];
            const std::int32_t y = dabs.isSteep() ? place[i] : minor[i];
            if (shows.hides(x, y)) {
                e.active &= ~(1u << i);
                continue;
            }
            Pixel* p = canvas.row<Depth>(y) + x;
            const bool same = p->red == pen.red && p->green == pen.green && p->blue == pen.blue;
            if (same && p->alpha >= highest) {
                e.active &= ~(1u << i);
                continue;
            }
            if (!same && p->alpha != 0) e.foreign |= 1u << i;
            e.at[i] = p;
        }
    }

    // Pixels of the edge of a run of one alpha, over any colour that white covers.
    void paintEdge(const Eight& e, std::int32_t& guess) {
        const Ints coverage = largestOf(e, guess);
        alignas(32) std::int32_t largest[kCount];
        lanes::store(largest, coverage);
        unsigned mixed = 0;
        for (unsigned rest = e.active; rest != 0; rest &= rest - 1) {
            const int i = std::countr_zero(rest);
            if (largest[i] == 0) continue;
            const typename Depth::Channel a = alphaAt(largest[i]);
            if (a == Depth::kWhite) {
                *e.at[i] = pen;
            } else if ((e.foreign >> i & 1) != 0) {
                mixed |= 1u << i;
            } else {
                raiseTo<Depth>(*e.at[i], pen, a);
            }
        }
        if (mixed != 0) merges.replayEdge(e, mixed, coverage);
    }

    // Pixels of the rim or the core, over any colour. core: lanes that lie in the core.
    void paintAny(const Eight& e, unsigned core, std::int32_t& guess) {
        const unsigned plain = e.active & ~e.foreign, others = e.active & e.foreign;
        if (plain != 0 && !byMerges()) {
            alignas(32) std::int32_t largest[kCount];
            lanes::store(largest, (plain & ~core) == 0 ? lanes::all(kInside) : largestOf(e, guess));
            for (unsigned rest = plain; rest != 0; rest &= rest - 1) {
                const int i = std::countr_zero(rest);
                const std::int32_t g = (core >> i & 1) != 0 ? kInside : largest[i];
                if (g != 0) raiseTo<Depth>(*e.at[i], pen, alphaAt(g));
            }
        }
        if (manner.hollow) {
            mergeAny<true>(e, plain, others, core);
        } else {
            mergeAny<false>(e, plain, others, core);
        }
    }

    template <bool kHollow>
    void mergeAny(const Eight& e, unsigned plain, unsigned others, unsigned core) {
        if (plain != 0 && byMerges())
            merges.template raise<kHollow>(e, plain, (plain & ~core) == 0);
        if (others != 0) merges.template replay<kHollow>(e, others, (others & ~core) == 0);
    }

    bool byMerges() const { return merges.isVaried() || manner.open; }

    typename Depth::Channel alphaAt(std::int32_t g) const {
        return g == kInside ? pen.alpha : Depth::coverAlpha(pen.alpha, g);
    }

    // Of entries of one radius: how near the nearest is that plots a lane, and whether one has it
    // interior. That tells the largest coverage.
    struct OneRadius {
        Ints nearest, interior;

        __attribute__((always_inline)) void add(const Plot& p) {
            nearest = lanes::least(nearest, where(p.plotted, p.over, lanes::all(kLimitless)));
            interior |= p.inside & ~p.plotted;
        }
    };
    // entry: one of them, or beyond the end.
    Ints coverageOf(const OneRadius& found, std::int32_t entry) const {
        const Ints edge = plot.edgeOf(
            found.nearest, ThickDabs::at(std::clamp(entry, dabs.begin(), dabs.end() - 1)));
        return where(found.interior, lanes::all(kInside),
                     edge & (found.nearest < lanes::all(kLimitless)));
    }
    bool haveOneRadius(const Offsets& o) const {
        return dabs.haveOneRadius(std::max(o.low, dabs.begin()),
                                  std::min(o.high + kCount - 1, dabs.end() - 1));
    }

    // Of entries that share a table: the least column in which one plots a lane, which tells the
    // largest coverage unless it is too near to the next one.
    struct OneTable {
        Ints column, interior;

        __attribute__((always_inline)) void add(const Plot& p, Ints fine) {
            column = lanes::least(column, where(p.plotted, fine, lanes::all(kLimitless)));
            interior |= p.inside & ~p.plotted;
        }
        Ints isPlotted() const { return (column < lanes::all(kLimitless)) & ~interior; }
        bool isSure() const { return !any(ThickPlot::isUnsure(column) & isPlotted()); }
    };
    Ints coverageOf(const OneTable& found, std::int32_t entry) const {
        const Ints edge = plot.coverageOf(found.column, ThickDabs::at(entry));
        return where(found.interior, lanes::all(kInside), edge & found.isPlotted());
    }

    // The largest coverage of any entry, by lane, on any path. Where all have one radius only those
    // count that are about as near as the nearest.
    Ints largestOfAll(const Eight& e) {
        const Offsets& all = window.offsets();
        const Ints active = lanesOf(e.active);
        const bool oneRadius = haveOneRadius(all);
        Ints largest = lanes::all(0), bound = plot.touchingBound();
        OneRadius found{lanes::all(kLimitless), lanes::all(0)};
        if (oneRadius) {
            Ints least = bound;
            for (std::int32_t o = all.low; o <= all.high; ++o)
                least = lanes::least(least, plot.overOf(e, o));
            bound = plot.equalBound(least);
        }
        bound = where(active, bound, lanes::all(-kLimitless));
        for (std::int32_t o = all.low; o <= all.high; ++o) {
            if (!any(plot.overOf(e, o) <= bound)) continue;
            if (oneRadius) {
                found.add(plot.plotOf(e, o));
            } else {
                const Cover c = plot.coverOf<false>(e, o);
                largest = most(largest, most(c.coverage, c.twin));
            }
        }
        return oneRadius ? coverageOf(found, all.low) : largest;
    }

    // The largest coverage of any entry, by lane.
    Ints largestOf(const Eight& e, std::int32_t& guess) {
        if (!window.isBounded()) return largestOfAll(e);
        const Offsets& all = window.offsets();
        const Offsets near{std::max(all.low, guess - kOneRadius),
                           std::min(all.high, guess + kOneRadius)};
        std::int32_t foot = guess;
        if (near.low <= near.high && haveOneRadius(near)) {
            OneRadius found{lanes::all(kLimitless), lanes::all(0)};
            const bool complete = window.scan(
                foot, near, [&](std::int32_t offset) __attribute__((always_inline)) {
                    const Plot p = plot.plotOf(e, offset);
                    found.add(p);
                    return p.over;
                });
            guess = foot;
            if (complete) return coverageOf(found, foot);
        }
        const std::int32_t first = std::max(all.low, dabs.begin());
        if (dabs.haveOneTable(first, std::min(all.high + kCount - 1, dabs.end() - 1))) {
            OneTable found{lanes::all(kLimitless), lanes::all(0)};
            window.scan(guess, all, [&](std::int32_t offset) {
                const Plot p = plot.plotOf(e, offset);
                found.add(p, plot.fineColumns(p, offset));
                return p.over;
            });
            if (found.isSure()) return coverageOf(found, first);
        }
        Ints largest = lanes::all(0);
        window.scan(guess, all, [&](std::int32_t offset) {
            const Cover c = plot.coverOf<false>(e, offset);
            largest = most(largest, most(c.coverage, c.twin));
            return c.over;
        });
        return largest;
    }

    const CanvasView& canvas;
    const WhatShows& shows;
    const Pixel& pen;
    ThickDabs& dabs;
    const ThickBounds& bounds;
    const Manner manner;
    ThickPlot plot;
    ThickWindow window;
    ThickMerge<Depth> merges;
    typename Depth::Channel highest{};  // alpha of the entries that may touch the places at hand
};

}  // namespace streakfall::thick

#include "shareForLines/simd/End.h"
