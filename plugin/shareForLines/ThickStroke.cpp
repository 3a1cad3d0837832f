#include "shareForLines/ThickStroke.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <vector>

#include "shareForLines/EightPixelsAvx2.h"
#include "shareForLines/HollowRow.h"
#include "shareForLines/Lanes.h"
#include "shareForLines/PenPixels.h"

#pragma GCC push_options
#pragma GCC target("avx2")

namespace streakfall {
namespace {

using namespace lanes;

constexpr std::int32_t kShortRun = 8;    // shorter ones are painted dab by dab
constexpr double kRegularRadius = 6.5;   // from here on every dab is what LargeDabShape tells
constexpr double kMostTurn = 0.85;       // least cosine of the turn from step to step of a wave
constexpr double kSameSpot = 1e-6;       // pixels
constexpr double kBend = 0.1;            // of a ramp's curve, at its start, against concave
constexpr std::int32_t kOneRadius = 24;  // entries around the foot that must have one radius
constexpr std::int32_t kLimitless = 1 << 30;
constexpr std::int32_t kInside = avx2::kInterior;

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

// The pixels at the edge of the run, eight neighbouring places along the major axis at a time.
template <class Depth>
class ThickStroke<Depth>::Rim {
  public:
    Rim(ThickStroke& stroke, LineCanvas& lineCanvas, const Pixel& linePen)
        : canvas(lineCanvas),
          pen(linePen),
          dabs(stroke.dabs),
          bounds(stroke.bounds),
          eight(linePen) {
        const double r = dabs.largest, g = dabs.mostGrowth;
        reachOver = static_cast<std::int32_t>(256.0 * (2.2 * r + 2.0));
        const double convex = 1.0 - g * g - kBend, noise = 0.177 * (r + 1.0);
        if (stroke.isStraight && convex > 0.3) {
            const double w = 1.0 / convex + std::sqrt((noise + 0.35) / convex);
            const double uneven = g > 0.0 ? 3.0 + 2.2 * g * (2.0 * w + 2.0) +
                                                0.5 * std::min(r, 11.0) + 2.0 * kRampBow * r * r
                                          : 0.0;
            slack = static_cast<std::int32_t>(256.0 * (w * w + noise + 1.0 + uneven));
        } else {
            slack = kLimitless;
        }
        straight = stroke.isStraight;
        const Dab &first = stroke.held[0],
                  &last = stroke.held[static_cast<std::size_t>(stroke.count - 1)];
        const double dx = last.x - first.x, dy = last.y - first.y;
        const double length = std::max(std::sqrt(dx * dx + dy * dy), 1e-3);
        const double sign = dabs.isForward() ? 1.0 : -1.0;
        const bool steepAxis = dabs.isSteep();
        alongMajor = static_cast<float>(sign * (steepAxis ? dy : dx) / length);
        alongMinor = static_cast<float>(sign * (steepAxis ? dx : dy) / length);
        startMajor = static_cast<float>((steepAxis ? first.y : first.x) - dabs.originMajor);
        startMinor = static_cast<float>((steepAxis ? first.x : first.y) - dabs.originMinor);
        // Quantised centres, and single precision.
        touch2 = static_cast<float>((r + 1.3) * (r + 1.3));
        everything = stroke.everything;
        varied = stroke.rising != 0;
        highAtEnd = (stroke.rising > 0) == dabs.isForward();
        exactHollow = dabs.anyHollow && (varied || stroke.everything);
    }

    void paint() {
        const Range places = bounds.places();
        std::int32_t from = dabs.begin(), to = dabs.begin();  // entries that may touch the places
        const auto widest = static_cast<float>(dabs.largest + 3.0);
        Guess near{dabs.begin()}, far{dabs.begin()};
        std::int32_t middle = dabs.begin();
        for (std::int32_t place = places.from; place <= places.to; place += kCount) {
            while (from < dabs.end() &&
                   dabs.major[ThickDabs::at(from)] < static_cast<float>(place) - widest) {
                ++from;
            }
            while (to < dabs.end() &&
                   dabs.major[ThickDabs::at(to)] <= static_cast<float>(place + kCount) + widest) {
                ++to;
            }
            while (middle < dabs.end() - 1 &&
                   dabs.major[ThickDabs::at(middle)] < static_cast<float>(place)) {
                ++middle;
                ++near.offset;
                ++far.offset;
            }
            lowest = from - (kCount - 1);
            highest = to - 1;
            if (lowest > highest) continue;
            paintPlaces(place, std::min(places.to - place + 1, kCount), near, far);
        }
    }

  private:
    // Where the foot was found last: an offset, which lane i takes i entries on, and the offsets
    // looked at, beyond which distances only grow.
    struct Guess {
        std::int32_t offset, low = 0, high = 0;
    };

    struct Offsets {
        std::int32_t low, high;  // both included
    };

    struct Eight {
        Ints place, minor;  // pixels from the origin
        Ints pixel;         // as ThickDabs::centre
        Pixel* at[kCount];  // of active lanes
        unsigned active;    // bits
    };

    struct Cover {
        Ints coverage;  // 0, kInside, or that of an edge pixel
        Ints twin;      // the same of the entry's last dab
        Ints twice;     // all ones where two arcs plot the pixel
        Ints over;      // squared distance less limit, 1/256 pixels squared
        Ints open;      // all ones where a hollow dab leaves the pixel open
    };

    void paintPlaces(std::int32_t place, std::int32_t n, Guess& near, Guess& far) {
        const auto i = static_cast<std::size_t>(place - bounds.places().from);
        const Ints used = kIota < lanes::all(n);
        const Ints reachFrom = lanes::load(&bounds.reachFrom[i]);
        const Ints reachTo = where(used, lanes::load(&bounds.reachTo[i]), reachFrom - 1);
        const Ints coreFrom = lanes::load(&bounds.coreFrom[i]);
        const Ints coreTo = lanes::load(&bounds.coreTo[i]);
        if (everything) {
            paintBetween(place, reachFrom, where(used, reachTo, reachFrom - 1), near, coreFrom,
                         coreTo);
            return;
        }
        const Ints solid = used & (coreFrom <= coreTo);
        paintBetween(place, reachFrom, where(solid, coreFrom - 1, reachTo), near);
        paintBetween(place, where(solid, coreTo + 1, reachTo + 1), reachTo, far);
    }

    // From one minor coordinate to another, each lane its own, both included.
    void paintBetween(std::int32_t place, Ints from, Ints to, Guess& guess,
                      Ints coreFrom = lanes::all(0), Ints coreTo = lanes::all(-1)) {
        Eight e;
        e.place = lanes::all(place) + kIota;
        for (Ints minor = from; any(minor <= to); minor += 1) {
            e.active = bits(minor <= to);
            e.minor = where(minor <= to, minor, from);
            gather(e);
            if (e.active == 0) continue;
            e.pixel = pairOf(e.place << 4, e.minor << 4);
            if (everything) {
                paintAny(e, bits((e.minor >= coreFrom) & (e.minor <= coreTo)), guess);
            } else {
                paintEight(e, guess);
            }
        }
    }

    // Finds the pixels; those that the pen cannot change are no longer active.
    void gather(Eight& e) {
        alignas(32) std::int32_t place[kCount], minor[kCount];
        lanes::store(place, e.place + dabs.originMajor);
        lanes::store(minor, e.minor + dabs.originMinor);
        foreign = 0;
        for (unsigned rest = e.active; rest != 0; rest &= rest - 1) {
            const int i = std::countr_zero(rest);
            const std::int32_t x = dabs.isSteep() ? minor[i] : place[i];
            const std::int32_t y = dabs.isSteep() ? place[i] : minor[i];
            if (canvas.shows.hides(x, y)) {
                e.active &= ~(1u << i);
                continue;
            }
            Pixel* p = canvas.row<Depth>(y) + x;
            const bool same = p->red == pen.red && p->green == pen.green && p->blue == pen.blue;
            if (same && p->alpha >= pen.alpha) {
                e.active &= ~(1u << i);
                continue;
            }
            if (!same && p->alpha != 0) foreign |= 1u << i;
            e.at[i] = p;
        }
    }

    void paintEight(const Eight& e, Guess& guess) {
        alignas(32) std::int32_t largest[kCount];
        lanes::store(largest, largestOf(e, guess));
        unsigned mixed = 0;
        for (unsigned rest = e.active; rest != 0; rest &= rest - 1) {
            const int i = std::countr_zero(rest);
            const std::int32_t g = largest[i];
            if (g == 0) continue;
            const typename Depth::Channel a =
                g == kInside ? pen.alpha : Depth::coverAlpha(pen.alpha, g);
            Pixel& p = *e.at[i];
            if ((foreign >> i & 1) != 0 && a != Depth::kWhite) {
                mixed |= 1u << i;
                continue;
            }
            if (a == Depth::kWhite || a > p.alpha) {
                p = pen;
                p.alpha = a;
            }
        }
        if (mixed != 0) replay(e, mixed, guess);
    }

    static Ints lanesOf(unsigned bits) {
        return ((lanes::all(static_cast<std::int32_t>(bits)) >> kIota) & 1) != 0;
    }

    // Pixels of the rim or the core, over any colour. core: lanes that lie in the core.
    void paintAny(const Eight& e, unsigned core, Guess& guess) {
        const unsigned plain = e.active & ~foreign, others = e.active & foreign;
        if (plain != 0 && !varied) {
            alignas(32) std::int32_t largest[kCount];
            lanes::store(largest, (plain & ~core) == 0 ? lanes::all(kInside) : largestOf(e, guess));
            for (unsigned rest = plain; rest != 0; rest &= rest - 1) {
                const int i = std::countr_zero(rest);
                const std::int32_t g = (core >> i & 1) != 0 ? kInside : largest[i];
                if (g == 0) continue;
                raise(*e.at[i], g == kInside ? pen.alpha : Depth::coverAlpha(pen.alpha, g));
            }
        }
        if (others == 0 && !varied) return;
        Offsets touching = touchingOf(e, e.active);
        if (touching.low > touching.high) return;
        if (exactHollow) {
            paintTouched<true>(e, plain, others, touching);
        } else {
            paintTouched<false>(e, plain, others, touching);
        }
    }

    template <bool kHollow>
    void paintTouched(const Eight& e, unsigned plain, unsigned others, Offsets touching) {
        if (plain != 0 && varied) {
            raiseAll(e, plain, mostAlpha<kHollow>(e, lanesOf(plain), touching, highAtEnd));
        }
        if (others != 0) replayAll<kHollow>(e, others, touching);
    }

    // A pixel that is empty or has the pen's colour.
    void raise(Pixel& p, typename Depth::Channel a) const {
        if (!(a > p.alpha)) return;
        p = pen;
        p.alpha = a;
    }
    void raiseAll(const Eight& e, unsigned which, Ints payloads) const {
        alignas(32) std::int32_t alphas[kCount];
        lanes::store(alphas, payloads);
        for (unsigned rest = which; rest != 0; rest &= rest - 1) {
            const int i = std::countr_zero(rest);
            typename Depth::Channel a;
            if constexpr (sizeof a == 4) {
                std::memcpy(&a, &alphas[i], sizeof a);
            } else {
                a = static_cast<typename Depth::Channel>(alphas[i]);
            }
            raise(*e.at[i], a);
        }
    }

    // The offsets from the first to the last that may touch one of these lanes; none when low >
    // high. On a straight line a dab touches a pixel when it lies within the root of
    // (r + 1)^2 - h^2 of the pixel's foot, h being how far the pixel is off the line.
    Offsets touchingOf(const Eight& e, unsigned wanted) const {
        if (!straight) return {lowest, highest};
        const Floats m = toFloats(e.place) - lanes::all(startMajor);
        const Floats n = toFloats(e.minor) - lanes::all(startMinor);
        const Floats along = m * lanes::all(alongMajor) + n * lanes::all(alongMinor);
        const Floats across = n * lanes::all(alongMajor) - m * lanes::all(alongMinor);
        const Floats half2 = lanes::all(touch2) - across * across;
        const Floats half = root(most(half2, lanes::all(0.0f)));
        const Ints from =
            floorOf((along - half) * lanes::all(alongMajor) + lanes::all(startMajor - 0.5f));
        const Ints to =
            floorOf((along + half) * lanes::all(alongMajor) + lanes::all(startMajor + 1.5f));
        Offsets o{highest + 1, lowest - 1};
        for (unsigned rest = wanted & bits(half2 >= lanes::all(0.0f)); rest != 0;
             rest &= rest - 1) {
            const int i = std::countr_zero(rest);
            o.low = std::min(o.low, dabs.entryFrom(from[i]) - i);
            o.high = std::max(o.high, dabs.entryFrom(to[i]) - 1 - i);
        }
        return {std::max(o.low, lowest), std::min(o.high, highest)};
    }

    // The largest alphas, as payloads, that entries give these lanes, from the offsets' end of the
    // higher alphas on until all are inside one that paints them.
    template <bool kHollow>
    Ints mostAlpha(const Eight& e, Ints wanted, Offsets o, bool fromEnd) {
        Ints best = lanes::all(0), missing = wanted;
        while (o.low <= o.high && any(missing)) {
            const std::int32_t offset = fromEnd ? o.high-- : o.low++;
            const Cover c = coverOf<kHollow>(e, offset);
            const Ints alpha = lanes::load(&dabs.alpha[ThickDabs::at(offset)]);
            best = most(best, ints(eight.covered(raw(most(c.coverage, c.twin)), raw(alpha))));
            missing &= c.coverage < kInside;
        }
        return best;
    }

    // True when one of these pixels has less than the alpha.
    template <class Pixels>
    bool isBelow(const Pixels& pixels, unsigned which, typename Depth::Channel alpha) const {
        alignas(32) Pixel now[kCount];
        eight.store(now, pixels);
        for (unsigned rest = which; rest != 0; rest &= rest - 1) {
            if (now[std::countr_zero(rest)].alpha < alpha) return true;
        }
        return false;
    }

    // All lanes are open, and stay so as long as the dab's middle is nearer to each of them than
    // the radius less kDeep: its hollow rows reach that far, and leave as much at both ends.
    void skipOpen(const Eight& e, unsigned wanted, bool forward, Offsets& o) const {
        constexpr double kDeep = kHollowRim + 2.7;
        const auto radiusAt = [&](std::int32_t k) {
            return dabs.exactRadius[ThickDabs::at(std::clamp(k, dabs.begin(), dabs.end() - 1))];
        };
        // Of the radii from one entry to another the smallest is that of an end of them.
        const double r = std::min(radiusAt(o.low), radiusAt(o.high + kCount - 1)) - kDeep;
        if (r <= 0.0) return;
        const Floats m = toFloats(e.place) - lanes::all(startMajor);
        const Floats n = toFloats(e.minor) - lanes::all(startMinor);
        const Floats along = m * lanes::all(alongMajor) + n * lanes::all(alongMinor);
        const Floats across = n * lanes::all(alongMajor) - m * lanes::all(alongMinor);
        const Floats half2 = lanes::all(static_cast<float>(r * r)) - across * across;
        if ((bits(half2 > lanes::all(0.0f)) & wanted) != wanted) return;
        const Floats half = root(most(half2, lanes::all(0.0f)));
        const Ints from =
            ceilOf((along - half) * lanes::all(alongMajor) + lanes::all(startMajor + 0.1f));
        const Ints to =
            floorOf((along + half) * lanes::all(alongMajor) + lanes::all(startMajor - 0.1f));
        Offsets deep{o.low, o.high};
        for (unsigned rest = wanted; rest != 0; rest &= rest - 1) {
            const int i = std::countr_zero(rest);
            deep.low = std::max(deep.low, dabs.entryFrom(from[i]) - i);
            deep.high = std::min(deep.high, dabs.entryFrom(to[i]) - 1 - i);
        }
        // Solid dabs come last.
        const auto isHollow = [&](std::int32_t k) {
            return dabs.hollowRows[ThickDabs::at(std::clamp(k, dabs.begin(), dabs.end() - 1))] >= 0;
        };
        if (forward) {
            while (deep.low <= deep.high && !isHollow(deep.high + kCount - 1)) --deep.high;
        } else {
            while (deep.low <= deep.high && !isHollow(deep.low)) ++deep.low;
        }
        if (deep.low > deep.high || !isHollow(deep.low) || !isHollow(deep.high + kCount - 1))
            return;
        if (forward && deep.low <= o.low) o.low = deep.high + 1;
        if (!forward && deep.high >= o.high) o.high = deep.low - 1;
    }

    // Every merge of these lanes in walk order until their colours rest.
    template <bool kHollow>
    void replayAll(const Eight& e, unsigned which, Offsets o) {
        const Ints wanted = lanesOf(which);
        alignas(32) Pixel old[kCount] = {};
        for (unsigned rest = which; rest != 0; rest &= rest - 1) {
            const int i = std::countr_zero(rest);
            old[i] = *e.at[i];
        }
        auto pixels = eight.load(old);
        const bool forward = dabs.isForward();
        Ints best = lanes::all(0);
        const typename Depth::Channel mostOfAll = highestAlpha(o);
        while (o.low <= o.high) {
            const std::int32_t offset = forward ? o.low++ : o.high--;
            const Cover c = coverOf<kHollow>(e, offset);
            if (!any(most(c.coverage, c.twin) & wanted)) {
                if (kHollow && straight && !any(~c.open & wanted)) skipOpen(e, which, forward, o);
                continue;
            }
            mergeCover(pixels, c, wanted, offset);
            if (any(~ints(eight.rests(pixels, mostOfAll)) & wanted)) continue;
            if (isBelow(pixels, which, mostOfAll)) {
                best = mostAlpha<kHollow>(e, wanted, o, varied ? highAtEnd : !forward);
            }
            break;
        }
        eight.store(old, pixels);
        for (unsigned rest = which; rest != 0; rest &= rest - 1) {
            const int i = std::countr_zero(rest);
            *e.at[i] = old[i];
        }
        keepLargest(e, which, best);
    }

    void keepLargest(const Eight& e, unsigned which, Ints payloads) const {
        alignas(32) std::int32_t alphas[kCount];
        lanes::store(alphas, payloads);
        for (unsigned rest = which; rest != 0; rest &= rest - 1) {
            const int i = std::countr_zero(rest);
            typename Depth::Channel a;
            if constexpr (sizeof a == 4) {
                std::memcpy(&a, &alphas[i], sizeof a);
            } else {
                a = static_cast<typename Depth::Channel>(alphas[i]);
            }
            if (a > e.at[i]->alpha) e.at[i]->alpha = a;
        }
    }

    typename Depth::Channel highestAlpha(Offsets o) const {
        if (!varied) return pen.alpha;
        const std::int32_t k = highAtEnd ? std::min(o.high + kCount - 1, dabs.end() - 1)
                                         : std::max(o.low, dabs.begin());
        typename Depth::Channel a;
        const std::int32_t payload = dabs.alpha[ThickDabs::at(k)];
        if constexpr (sizeof a == 4) {
            std::memcpy(&a, &payload, sizeof a);
        } else {
            a = static_cast<typename Depth::Channel>(payload);
        }
        return a;
    }

    // The merges of eight entries, each as often as it has dabs there, and pixels two arcs plot.
    template <class Pixels>
    void mergeCover(Pixels& pixels, const Cover& c, Ints wanted, std::int32_t offset) {
        const std::size_t k = ThickDabs::at(offset);
        const Ints alpha = lanes::load(&dabs.alpha[k]);
        const auto merge = [&](Ints coverage, Ints lanesTaken) {
            const Ints g = coverage & lanesTaken;
            eight.merge(pixels, eight.ordered(eight.covered(raw(g), raw(alpha))));
            const Ints twice = g & c.twice;
            if (any(twice))
                eight.merge(pixels, eight.ordered(eight.covered(raw(twice), raw(alpha))));
        };
        merge(c.coverage, wanted);
        std::uint64_t times = 0;
        std::memcpy(&times, &dabs.times[k], sizeof times);
        if (times == 0x0101010101010101u) return;
        alignas(32) std::int32_t counts[kCount];
        for (std::size_t i = 0; i < kCount; ++i) counts[i] = dabs.times[k + i];
        merge(c.twin, wanted & (lanes::load(counts) > 1));
    }

    // Walks the entries both ways from the guess until none can matter; `look(offset)` gives the
    // lanes' squared distance less the limit.
    template <class Look>
    bool scan(Guess& guess, std::int32_t lowBound, std::int32_t highBound, Look look) const {
        const std::int32_t middle = std::clamp(guess.offset, lowBound, highBound);
        std::int32_t low = middle, high = middle;
        Ints least = look(middle);
        const auto matters = [&](std::int32_t offset) {
            const Ints over = look(offset);
            least = lanes::least(least, over);
            return slack == kLimitless || any(over <= least + slack);
        };
        bool more = true;
        while (low > lowBound && more) more = matters(--low);
        const bool lowDone = !more || low == lowest;
        more = true;
        while (high < highBound && more) more = matters(++high);
        guess = {(low + high) / 2, low, high};
        return lowDone && (!more || high == highest);
    }

    Ints largestOf(const Eight& e, Guess& guess) {
        const std::int32_t low = std::max(lowest, guess.offset - kOneRadius);
        const std::int32_t high = std::min(highest, guess.offset + kOneRadius);
        Guess found = guess;
        if (low <= high && slack != kLimitless &&
            dabs.haveOneRadius(std::max(low, dabs.begin()),
                               std::min(high + kCount - 1, dabs.end() - 1))) {
            Ints nearest = lanes::all(kLimitless), inside = lanes::all(0);
            const bool complete = scan(found, low, high, [&](std::int32_t offset) {
                const Plot p = plotOf(e, offset);
                nearest = lanes::least(nearest, where(p.plotted, p.over, lanes::all(kLimitless)));
                inside |= p.inside & ~p.plotted;
                return p.over;
            });
            if (complete) {
                guess = found;
                const Ints edge = edgeCoverage(
                    e, nearest,
                    ThickDabs::at(std::clamp(found.offset, dabs.begin(), dabs.end() - 1)));
                return where(inside, lanes::all(kInside),
                             edge & (nearest < lanes::all(kLimitless)));
            }
            found = guess;
        }
        Ints largest = lanes::all(0);
        scan(found, lowest, highest, [&](std::int32_t offset) {
            const Cover c = coverOf<false>(e, offset);
            largest = most(largest, most(c.coverage, c.twin));
            return c.over;
        });
        guess = found;
        return largest;
    }

    struct Plot {
        Ints over, inside, plotted, twice;
    };

    __attribute__((always_inline)) Plot plotOf(const Eight& e, std::int32_t offset) const {
        const std::size_t k = ThickDabs::at(offset);
        const Ints d = pairDifference(e.pixel, lanes::load(&dabs.centre[k]));
        Plot p;
        p.over = pairSquares(d) - lanes::load(&dabs.limit[k]);
        p.inside = p.over >> 31;
        p.twice = lanes::all(0);
        const Ints major = magnitude(lowHalf(d)), minor = magnitude(highHalf(d));
        // One pixel on across the circle: (|v| +- 16)^2 = v^2 +- 32 |v| + 256.
        const Ints next = p.over + 256;
        const auto straddles = [&](Ints away) {
            const Ints outside = ~p.inside;
            return p.inside ^ ((next + (((away << 5) ^ outside) - outside)) >> 31);
        };
        p.plotted = straddles(minor);
        // Arcs meet at 45 degrees, within two pixels.
        if (any((major + 64 > minor) & (p.over < reachOver))) [[unlikely]] {
            dabs.needArcs(offset, kCount);
            const Ints far = highHalf(d) >= 0, right = lowHalf(d) >= 0;
            const Ints byMinor =
                p.plotted & where(far, within(e.place, lanes::load(&dabs.minorFar[k])),
                                  within(e.place, lanes::load(&dabs.minorNear[k])));
            const Ints byMajor =
                straddles(major) & where(right, within(e.minor, lanes::load(&dabs.majorFar[k])),
                                         within(e.minor, lanes::load(&dabs.majorNear[k])));
            p.plotted = byMinor | byMajor;
            p.twice = byMinor & byMajor;
        }
        return p;
    }

    // Columns of a table of 4096ths that single precision tells for sure: the sum is below 1024 r
    // between columns 0 and 32, exact, and what is rounded, below 2^17 4096ths, has an error of
    // less than 0.05; with the rounding to whole ones less than 1.
    static Ints fineColumns(Ints over, Floats scale, Floats base) {
        const Floats fine = toFloats(over) * scale + base;
        return rounded(least(most(fine, lanes::all(0.5f * 4096.0f)), lanes::all(31.5f * 4096.0f)));
    }
    static Ints isUnsure(Ints fine) { return ((fine + 1) & 4095) < 3; }

    // The distance formula as it is defined, on a sum that is exact.
    static std::int32_t exactColumn(std::int32_t over, std::int32_t limit, double r) {
        return coverageColumn(((over + limit) / 256.0 - r * r) / (2.0 * r));
    }

    // Of pixels that are plotted, all by dabs of the radius of this entry.
    static Ints edgeOf(const ThickDabs& dabs, Ints over, std::size_t entry) {
        const Ints fine = fineColumns(over, lanes::all(dabs.columnScale[entry]),
                                      lanes::all(dabs.columnBase[entry]));
        Ints column = fine >> 12;
        const Ints unsure = isUnsure(fine) & (over < lanes::all(kLimitless));
        if (any(unsure)) [[unlikely]] {
            alignas(32) std::int32_t columns[kCount], overs[kCount];
            lanes::store(columns, column);
            lanes::store(overs, over);
            for (unsigned rest = bits(unsure); rest != 0; rest &= rest - 1) {
                const int i = std::countr_zero(rest);
                columns[i] = exactColumn(overs[i], dabs.limit[entry], dabs.exactRadius[entry]);
            }
            column = lanes::load(columns);
        }
        return ByteTable(dabs.coverage[entry])[column];
    }
    Ints edgeCoverage(const Eight&, Ints over, std::size_t entry) const {
        return edgeOf(dabs, over, entry);
    }

    // What eight entries do to eight pixels, one each.
    template <bool kHollow>
    __attribute__((always_inline)) Cover coverOf(const Eight& e, std::int32_t offset) {
        const std::size_t k = ThickDabs::at(offset);
        const Plot p = plotOf(e, offset);
        Cover c;
        c.over = p.over;
        c.twice = p.twice;
        Ints interior = p.inside & ~p.plotted;
        c.open = lanes::all(0);
        if constexpr (kHollow) {
            c.open = openOf(e, p, k, kHollowRim);
            interior &= ~c.open;
        }
        c.coverage = c.twin = interior & lanes::all(kInside);
        if (!any(p.plotted)) return c;
        const Ints fine = fineColumns(p.over, lanes::load(&dabs.columnScale[k]),
                                      lanes::load(&dabs.columnBase[k]));
        Ints column = fine >> 12, twin = column;
        const Ints unsure = isUnsure(fine) & p.plotted;
        if (any(unsure)) [[unlikely]] {
            alignas(32) std::int32_t columns[kCount], twins[kCount], overs[kCount];
            lanes::store(columns, column);
            lanes::store(twins, column);
            lanes::store(overs, p.over);
            for (unsigned rest = bits(unsure); rest != 0; rest &= rest - 1) {
                const int i = std::countr_zero(rest);
                const std::size_t n = k + static_cast<std::size_t>(i);
                columns[i] = exactColumn(overs[i], dabs.limit[n], dabs.exactRadius[n]);
                twins[i] = exactColumn(overs[i], dabs.limit[n], dabs.twinRadius[n]);
            }
            column = lanes::load(columns);
            twin = lanes::load(twins);
        }
        c.coverage |= lookUp(k, column) & p.plotted;
        c.twin |= lookUp(k, twin) & p.plotted;
        return c;
    }

    // Lanes that a hollow dab leaves open: pixels whose third neighbours on both sides of the row
    // are interior and on the canvas, in rows that are not painted whole.
    Ints openOf(const Eight& e, const Plot& p, std::size_t k, std::int32_t rim) {
        const Ints x = (dabs.isSteep() ? e.minor + dabs.originMinor : e.place + dabs.originMajor);
        const Ints y = (dabs.isSteep() ? e.place + dabs.originMajor : e.minor + dabs.originMinor);
        const Ints rows = magnitude(y - lanes::load(&dabs.middleRow[k]));
        Ints open = (rows <= lanes::load(&dabs.hollowRows[k]) - (rim - kHollowRim)) & (x >= rim) &
                    (x < canvas.width - rim) & p.inside;
        if (!any(open)) return open;
        // The third neighbour away from the middle: (|u| + 16 n)^2 = u^2 + 32 n |u| + 256 n^2. Well
        // inside it is interior whatever arcs cross there, and so is the nearer one.
        const Ints d = pairDifference(e.pixel, lanes::load(&dabs.centre[k]));
        const Ints u = magnitude(dabs.isSteep() ? highHalf(d) : lowHalf(d));
        const Ints v = magnitude(dabs.isSteep() ? lowHalf(d) : highHalf(d));
        const Ints beyond = p.over + u * (32 * rim) + 256 * rim * rim;
        open &= beyond < 0;
        const Ints sure = beyond + (most(u + 16 * rim, v) << 5) + 256 < 0;
        if (!any(open & ~sure)) return open;
        for (const std::int32_t side : {-rim, rim}) {
            Eight third = e;
            if (dabs.isSteep()) {
                third.minor = e.minor + side;
            } else {
                third.place = e.place + side;
            }
            third.pixel = pairOf(third.place << 4, third.minor << 4);
            const Plot q = plotOf(third, static_cast<std::int32_t>(k));
            open &= q.inside & ~q.plotted;
        }
        return open;
    }

    // Coverage by column, each lane of its own entry.
    Ints lookUp(std::size_t k, Ints column) const {
        if (dabs.coverage[k] == dabs.coverage[k + kCount - 1]) {
            return ByteTable(dabs.coverage[k])[column];
        }
        alignas(32) std::int32_t columns[kCount];
        lanes::store(columns, column);
        for (std::size_t i = 0; i < kCount; ++i) columns[i] = dabs.coverage[k + i][columns[i]];
        return lanes::load(columns);
    }

    // Every merge of these lanes in walk order, from the first dab that may touch one to the last.
    void replay(const Eight& e, unsigned lanesMixed, const Guess& guess) {
        const Ints wanted = ((lanes::all(static_cast<std::int32_t>(lanesMixed)) >> kIota) & 1) != 0;
        const auto touches = [&](std::int32_t offset) {
            const Ints d =
                pairDifference(e.pixel, lanes::load(&dabs.centre[ThickDabs::at(offset)]));
            const Ints over = pairSquares(d) - lanes::load(&dabs.limit[ThickDabs::at(offset)]);
            return any((over < reachOver) & wanted);
        };
        std::int32_t low = lowest, high = highest;
        if (slack != kLimitless) {
            // Beyond what was looked at distances only grow.
            low = guess.low;
            high = guess.high;
            while (low > lowest && touches(low - 1)) --low;
            while (high < highest && touches(high + 1)) ++high;
        }
        alignas(32) Pixel old[kCount] = {};
        for (unsigned rest = lanesMixed; rest != 0; rest &= rest - 1) {
            const int i = std::countr_zero(rest);
            old[i] = *e.at[i];
        }
        auto pixels = eight.load(old);
        const auto paint = [&](std::int32_t offset) {
            const Cover c = coverOf<false>(e, offset);
            if (any(most(c.coverage, c.twin) & wanted)) mergeCover(pixels, c, wanted, offset);
        };
        if (dabs.isForward()) {
            for (std::int32_t o = low; o <= high; ++o) paint(o);
        } else {
            for (std::int32_t o = high; o >= low; --o) paint(o);
        }
        eight.store(old, pixels);
        for (unsigned rest = lanesMixed; rest != 0; rest &= rest - 1) {
            const int i = std::countr_zero(rest);
            *e.at[i] = old[i];
        }
    }

    LineCanvas& canvas;
    const Pixel& pen;
    ThickDabs& dabs;
    const ThickBounds& bounds;
    const avx2::EightPixels<Depth> eight;
    std::int32_t reachOver;  // beyond it a dab touches nothing
    std::int32_t slack;      // over the least distance, from which on a dab does not matter
    std::int32_t lowest = 0, highest = -1;  // offsets that may touch the places
    unsigned foreign = 0;                   // lanes that hold another colour
    bool straight;
    // Of a straight run: its first dab, and the direction of rising major coordinates.
    float startMajor, startMinor, alongMajor, alongMinor;
    float touch2;      // squared distance from which on a dab touches nothing
    bool everything;   // the core, too
    bool varied;       // alphas along the run
    bool highAtEnd;    // they rise with the entries
    bool exactHollow;  // hollow dabs are looked at as such
};

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
        byDabs = dabs.anyHollow && middlesStayOpen && rising == 0;
    }
    Pixel own = pen;
    if (!byDabs) {
        own.alpha = rising < 0 ? heldAlphas[0] : heldAlphas[static_cast<std::size_t>(count - 1)];
        const Range x{-(steep ? dabs.originMinor : dabs.originMajor),
                      canvas.width - 1 - (steep ? dabs.originMinor : dabs.originMajor)};
        const Range y{-(steep ? dabs.originMajor : dabs.originMinor),
                      canvas.height - 1 - (steep ? dabs.originMajor : dabs.originMinor)};
        bounds.find(dabs, isStraight, steep ? y : x, steep ? x : y);
        everything = everything || (own.alpha != Depth::kWhite && meetsOthers(canvas, own));
    }
    if (byDabs) {
        for (std::size_t k = 0; k < static_cast<std::size_t>(count); ++k) {
            own.alpha = heldAlphas[k];
            single.paint(canvas, own, held[k]);
        }
    } else {
        Rim(*this, canvas, own).paint();
        if (!everything) paintCore(canvas, own);
    }
    count = 0;
}

template class ThickStroke<Depth8>;
template class ThickStroke<Depth16>;
template class ThickStroke<DepthFloat>;

}  // namespace streakfall

#pragma GCC pop_options
