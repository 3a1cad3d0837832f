// ThickMerge: the pixels of a run of dabs whose merges must be made one by one, in walk order, and
// those of varied alphas.
//
// Merges stop when the colour rests (EightPixels); from there on the largest alpha counts, as it
// does from the start on a pixel that is empty or has the pen's colour. Along a run alphas rise,
// fall or stay, so it comes from the first dab met from the high side that has the pixel inside, or
// from one before.
//
// Owner: the painter of a run. Needs a processor with AVX2.
#pragma once

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <optional>
#include <type_traits>

#include "shareForLines/fast/OrderOfPaint.h"
#include "shareForLines/fast/thick/ThickPlot.h"
#include "shareForLines/fast/thick/ThickWindow.h"
#include "shareForLines/simd/Begin.h"
#include "shareForLines/simd/MixedPixels.h"

namespace streakfall::thick {

using namespace lanes;

inline Ints lanesOf(unsigned bits) {
    return ((lanes::all(static_cast<std::int32_t>(bits)) >> kIota) & 1) != 0;
}

// Eight pixels of the canvas.
template <class Depth>
struct Pixels8 : Places {
    typename Depth::Pixel* at[kCount];  // of active lanes
    unsigned active;                    // bits
    unsigned foreign;                   // those that hold another colour than the pen's
};

template <class Depth>
class ThickMerge {
  public:
    using Pixel = typename Depth::Pixel;
    using Channel = typename Depth::Channel;
    using Eight = Pixels8<Depth>;

    // All outlive it. rising: 1 or -1 when alphas rise or fall along the way, else 0.
    ThickMerge(const ThickDabs& entries, ThickPlot& plots, const ThickWindow& windows,
               const Pixel& linePen, std::int32_t rising)
        : dabs(entries),
          plot(plots),
          window(windows),
          pen(linePen),
          eight(linePen),
          varied(rising != 0),
          highAtEnd((rising > 0) == entries.isForward()) {}

    bool isVaried() const { return varied; }

    // Of the entries of these offsets.
    Channel highestAlpha(const Offsets& o) const {
        if (!varied) return pen.alpha;
        const std::int32_t k = highAtEnd ? std::min(o.high + kCount - 1, dabs.end() - 1)
                                         : std::max(o.low, dabs.begin());
        return alphaOf(dabs.alpha[ThickDabs::at(k)]);
    }

    // Gives these lanes, empty or of the pen's colour, their largest alpha. kHollow: hollow dabs
    // leave their middle open. core: all lie in the core.
    template <bool kHollow>
    void raise(const Eight& e, unsigned which, bool core) {
        const Ints wanted = lanesOf(which);
        const auto deep = !kHollow && core ? deepOffset(e, wanted) : std::nullopt;
        const Ints best = deep ? mostAlphaFrom(e, wanted, *deep)
                               : mostAlpha<kHollow>(e, wanted, touchingOf(e, which), highAtEnd);
        forAlphas(which, best, [&](int i, Channel a) { raiseTo<Depth>(*e.at[i], pen, a); });
    }

    // Every merge of these lanes in walk order until their colours rest.
    template <bool kHollow>
    void replay(const Eight& e, unsigned which, bool core) {
        const auto deep = !kHollow && core ? deepOffset(e, lanesOf(which)) : std::nullopt;
        if (deep) {
            replayDeep(e, which, *deep);
            return;
        }
        const Offsets o = touchingOf(e, which);
        replayOf<kHollow>(e, which, o, highestAlpha(o), nullptr);
    }

    // Likewise, of pixels at the edge of a run of one alpha, of which the largest coverage is
    // known.
    void replayEdge(const Eight& e, unsigned which, Ints coverage) {
        const Ints alpha = ints(eight.payload(pen.alpha));
        const Ints known = ints(eight.covered(raw(coverage), raw(alpha)));
        replayOf<false>(e, which, touchingOf(e, which), mostOf(which, known), &known);
    }

  private:
    static Channel alphaOf(std::int32_t payload) {
        if constexpr (sizeof(Channel) == sizeof payload) {
            Channel a;
            std::memcpy(&a, &payload, sizeof a);
            return a;
        } else {
            return static_cast<Channel>(payload);
        }
    }
    template <class Use>
    static void forAlphas(unsigned which, Ints payloads, Use use) {
        alignas(32) std::int32_t alphas[kCount];
        lanes::store(alphas, payloads);
        for (unsigned rest = which; rest != 0; rest &= rest - 1) {
            const int i = std::countr_zero(rest);
            use(i, alphaOf(alphas[i]));
        }
    }

    static Channel mostOf(unsigned which, Ints payloads) {
        Channel most = 0;
        forAlphas(which, payloads, [&](int, Channel a) { most = std::max(most, a); });
        return most;
    }

    // The merges of these offsets, until the lanes' colours rest. mostOfAll: of all their alphas.
    // known: the largest alpha of each lane, as payloads, or null.
    template <bool kHollow>
    void replayOf(const Eight& e, unsigned which, const Offsets& o, Channel mostOfAll,
                  const Ints* known) {
        alignas(32) Pixel old[kCount] = {};
        fetch(e, which, old);
        const auto replayOn = [&](auto colors) {
            const Ints best = mergeAll<kHollow>(colors, e, which, o, mostOfAll, known);
            eight.store(old, colors.result());
            return best;
        };
        const Ints best = mostOfAll < Depth::kWhite
                              ? replayOn(avx2::MixedPixels<Depth>(pen, eight.load(old)))
                              : replayOn(avx2::MergedPixels<Depth>(pen, eight.load(old)));
        put(e, which, old, best);
    }

    // Likewise of lanes deep inside the entries of this offset.
    void replayDeep(const Eight& e, unsigned which, std::int32_t deep) {
        const Ints best = mostAlphaFrom(e, lanesOf(which), deep);
        alignas(32) Pixel old[kCount] = {};
        fetch(e, which, old);
        const Channel most = mostOf(which, best);
        if constexpr (kColorsRest) {
            if (comesToRest(e, which, deep, old, most)) {
                eight.store(old, eight.rested(eight.load(old)));
                put(e, which, old, best);
                return;
            }
        }
        replayOf<false>(e, which, touchingOf(e, which), most, &best);
    }

    static void fetch(const Eight& e, unsigned which, Pixel* old) {
        for (unsigned rest = which; rest != 0; rest &= rest - 1) {
            const int i = std::countr_zero(rest);
            old[i] = *e.at[i];
        }
    }
    // Writes them back, at these alphas, as payloads, where they are larger.
    static void put(const Eight& e, unsigned which, const Pixel* values, Ints best) {
        forAlphas(which, best, [&](int i, Channel a) {
            *e.at[i] = values[i];
            if (a > e.at[i]->alpha) e.at[i]->alpha = a;
        });
    }

    // The last offset, towards the higher alphas, whose entries have these lanes deep inside, if it
    // is found. Straight runs only.
    std::optional<std::int32_t> deepOffset(const Eight& e, Ints wanted) {
        if (!window.isStraight()) return std::nullopt;
        const std::int32_t out = highAtEnd ? 1 : -1;
        const auto isDeep = [&](std::int32_t offset) {
            return window.has(offset) && plot.areDeepInside(e, wanted, offset, offset);
        };
        for (const bool guess : {false, true}) {
            std::int32_t k = guess ? window.insideGuess(e, bits(wanted), highAtEnd) : lastDeep;
            for (int i = 0; i <= kNear; ++i, k -= out) {
                if (!isDeep(k)) continue;
                while (isDeep(k + out)) k += out;
                lastDeep = k;
                return k;
            }
        }
        return std::nullopt;
    }

    // The largest alphas, as payloads, of lanes deep inside the entries of this offset. Squared
    // distances rise from the last such one on but for noise, so that behind one that is far enough
    // off none touches, or none gives more than a third of its alpha.
    Ints mostAlphaFrom(const Eight& e, Ints wanted, std::int32_t deep) {
        Ints best = wanted & lanes::load(&dabs.alpha[ThickDabs::at(deep)]);
        if (!varied) return best;
        const std::int32_t out = highAtEnd ? 1 : -1;
        const Channel least =
            alphaOf(dabs.alpha[ThickDabs::at(highAtEnd ? deep : deep + kCount - 1)]);
        const Ints bound = highestAlpha(window.offsets()) / 3 <= least ? plot.pastFaintBound()
                                                                       : plot.pastTouchingBound();
        for (std::int32_t k = deep + out; window.has(k); k += out) {
            const Cover c = plot.coverOf<false>(e, k);
            if (!any((c.over <= bound) & wanted)) break;
            const Ints alpha = lanes::load(&dabs.alpha[ThickDabs::at(k)]);
            best = most(best, ints(eight.covered(raw(most(c.coverage, c.twin)), raw(alpha))));
        }
        return best;
    }

    // The largest alphas, as payloads, that entries give these lanes, from the offsets' end of the
    // higher alphas on until all are inside one that paints them.
    template <bool kHollow>
    Ints mostAlpha(const Eight& e, Ints wanted, Offsets o, bool fromEnd) {
        Ints best = lanes::all(0), missing = wanted;
        while (o.low <= o.high && any(missing)) {
            const std::int32_t offset = fromEnd ? o.high-- : o.low++;
            const Cover c = plot.coverOf<kHollow>(e, offset);
            const Ints alpha = lanes::load(&dabs.alpha[ThickDabs::at(offset)]);
            best = most(best, ints(eight.covered(raw(most(c.coverage, c.twin)), raw(alpha))));
            missing &= c.coverage < kInside;
        }
        return best;
    }

    // Merges what the entries of these offsets paint on these lanes until they rest. Returns what
    // alpha they have at least in the end, as payloads.
    template <bool kHollow, class Colors>
    Ints mergeAll(Colors& colors, const Eight& e, unsigned which, Offsets o, Channel mostOfAll,
                  const Ints* known) {
        const Ints wanted = lanesOf(which);
        const bool forward = dabs.isForward();
        Offsets open{0, -1};  // all lanes are
        bool isOpenKnown = !window.isStraight();
        while (o.low <= o.high) {
            const std::int32_t offset = forward ? o.low++ : o.high--;
            const Cover c = plot.coverOf<kHollow>(e, offset);
            if (!any(most(c.coverage, c.twin) & wanted)) {
                if (!isOpenKnown && kHollow && !any(~c.open & wanted)) {
                    open = window.openOf(e, which, o);
                    isOpenKnown = true;
                }
                if (forward && open.low <= o.low && o.low <= open.high) o.low = open.high + 1;
                if (!forward && open.low <= o.high && o.high <= open.high) o.high = open.low - 1;
                continue;
            }
            mergeCover(colors, c, wanted, offset);
            if (any(~ints(colors.rests(mostOfAll)) & wanted)) continue;
            if (known == nullptr && isBelow(colors.result(), which, mostOfAll)) {
                return mostAlpha<kHollow>(e, wanted, o, varied ? highAtEnd : !forward);
            }
            break;
        }
        return known != nullptr ? *known : lanes::all(0);
    }

    // True when the merges surely bring the colours, any at all, of these lanes to rest, which are
    // deep inside the entries of that offset. most: of all alphas that reach them.
    bool comesToRest(const Eight& e, unsigned which, std::int32_t deep, const Pixel* old,
                     Channel most) const {
        constexpr std::int32_t kOthers = kMergesToRest<Depth> - 1;
        const Offsets o = highAtEnd ? Offsets{deep - kOthers, deep} : Offsets{deep, deep + kOthers};
        if (!window.has(o.low) || !window.has(o.high)) return false;
        const Channel least =
            alphaOf(dabs.alpha[ThickDabs::at(highAtEnd ? o.low : o.high + kCount - 1)]);
        Channel leastStored = Depth::kWhite, mostStored = most;
        for (unsigned rest = which; rest != 0; rest &= rest - 1) {
            const Channel stored = old[std::countr_zero(rest)].alpha;
            leastStored = std::min(leastStored, stored);
            mostStored = std::max(mostStored, stored);
        }
        return halvesDifference<Depth>(least, most, leastStored, mostStored) &&
               plot.areDeepInside(e, lanesOf(which), o.low, o.high);
    }

    // True when one of these pixels has less than the alpha.
    template <class Pixels>
    bool isBelow(const Pixels& pixels, unsigned which, Channel alpha) const {
        alignas(32) Pixel now[kCount];
        eight.store(now, pixels);
        for (unsigned rest = which; rest != 0; rest &= rest - 1) {
            if (now[std::countr_zero(rest)].alpha < alpha) return true;
        }
        return false;
    }

    Offsets touchingOf(const Eight& e, unsigned which) const {
        Offsets o = window.touchingOf(e, which);
        plot.keepTouching(e, lanesOf(which), o.low, o.high);
        return o;
    }

    // The merges of eight entries, each as often as it has dabs there, and pixels two arcs plot.
    template <class Colors>
    void mergeCover(Colors& colors, const Cover& c, Ints wanted, std::int32_t offset) {
        const std::size_t k = ThickDabs::at(offset);
        const Ints alpha = lanes::load(&dabs.alpha[k]);
        const auto merge = [&](Ints coverage, Ints lanesTaken) {
            const Ints g = coverage & lanesTaken;
            colors.merge(eight.ordered(eight.covered(raw(g), raw(alpha))), 1);
            const Ints twice = g & c.twice;
            if (any(twice)) colors.merge(eight.ordered(eight.covered(raw(twice), raw(alpha))), 1);
        };
        merge(c.coverage, wanted);
        std::uint64_t times = 0;
        std::memcpy(&times, &dabs.times[k], sizeof times);
        if (times == 0x0101010101010101u) return;
        alignas(32) std::int32_t counts[kCount];
        for (std::size_t i = 0; i < kCount; ++i) counts[i] = dabs.times[k + i];
        merge(c.twin, wanted & (lanes::load(counts) > 1));
    }

    static constexpr int kNear = 4;  // offsets that lastDeep moves from one eight to the next
    static constexpr bool kColorsRest = std::is_integral_v<Channel>;

    const ThickDabs& dabs;
    ThickPlot& plot;
    const ThickWindow& window;
    const Pixel& pen;
    const avx2::EightPixels<Depth> eight;
    const bool varied;
    const bool highAtEnd;       // alphas rise with the entries
    std::int32_t lastDeep = 0;  // what deepOffset found last
};

}  // namespace streakfall::thick

#include "shareForLines/simd/End.h"
