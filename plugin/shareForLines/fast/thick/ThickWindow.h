// ThickWindow: which entries of a run of dabs can matter to eight pixels.
//
// Entries are named by offsets: lane i takes entry offset + i.
//
// With f(k) the squared distance of a pixel from dab k less the squared radius, f is convex along a
// straight line: its second difference is 2 (1 - g^2) or more, g the growth of the radius in a
// pixel, but for the bow of a ramp's curve at its start, by which f is off 2 kRampBow r^2 at the
// most. Quantised centres move f by at most 0.0885 (r + 1). So if some dab has a pixel, or its
// neighbour across the rim, inside, then one does that lies within w = root of (0.177 (r + 1) +
// 0.35) of its foot, and no dab whose f is more than (1 + w)^2 + 0.177 (r + 1) above the least can
// give more coverage; where the radius varies, so do the table's rows and the distance that a
// column stands for, which takes some more. Entries are looked at from the last foot found both
// ways until all are that far above. Along a bent path f may have several feet, and all entries
// that touch are offered (ThickPlot::equalBound tells which of them matter).
//
// Owner: the painter of a run. Needs a processor with AVX2.
#pragma once

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <span>

#include "shareForLines/disc/HollowRow.h"
#include "shareForLines/fast/thick/ThickDabs.h"
#include "shareForLines/fast/thick/ThickPlot.h"
#include "shareForLines/path/StrokeShape.h"
#include "shareForLines/simd/Begin.h"
#include "shareForLines/simd/Lanes.h"

namespace streakfall::thick {

using namespace lanes;

// Both included; none when low > high.
struct Offsets {
    std::int32_t low, high;
};

class ThickWindow {
  public:
    // run, of which dabs holds the entries, outlives it, as do these.
    ThickWindow(const ThickDabs& entries, std::span<const Dab> run, bool straightRun)
        : dabs(entries), straight(straightRun) {
        const double r = dabs.largest, g = dabs.mostGrowth;
        const double convex = 1.0 - g * g - kBend, noise = centreNoise(r);
        if (straight && convex > 0.3) {
            const double w = 1.0 / convex + std::sqrt((noise + 0.35) / convex);
            const double uneven =
                g > 0.0 ? 3.0 + 2.2 * g * (2.0 * w + 2.0) + 0.5 * std::min(r, 11.0) + bowNoise(r)
                        : 0.0;
            slack = static_cast<std::int32_t>(256.0 * (w * w + noise + 1.0 + uneven));
        }
        const Dab &first = run.front(), &last = run.back();
        const double dx = last.x - first.x, dy = last.y - first.y;
        const double length = std::max(std::sqrt(dx * dx + dy * dy), 1e-3);
        const double sign = dabs.isForward() ? 1.0 : -1.0;
        const bool steep = dabs.isSteep();
        alongMajor = static_cast<float>(sign * (steep ? dy : dx) / length);
        alongMinor = static_cast<float>(sign * (steep ? dx : dy) / length);
        startMajor = static_cast<float>((steep ? first.y : first.x) - dabs.originMajor);
        startMinor = static_cast<float>((steep ? first.x : first.y) - dabs.originMinor);
        // Quantised centres, and single precision.
        touch2 = static_cast<float>((r + 1.3) * (r + 1.3));
    }

    // Moves on to eight places from this major coordinate on; false when no entry touches them.
    bool moveTo(std::int32_t place) {
        const auto widest = static_cast<float>(dabs.largest + 3.0);
        const auto isBefore = [&](std::int32_t entry, float major) {
            return entry < dabs.end() && dabs.major[ThickDabs::at(entry)] < major;
        };
        while (isBefore(fromEntry, static_cast<float>(place) - widest)) ++fromEntry;
        while (isBefore(toEntry, static_cast<float>(place + kCount) + widest)) ++toEntry;
        all = {fromEntry - (kCount - 1), toEntry - 1};
        return all.low <= all.high;
    }

    bool isStraight() const { return straight; }
    // False where all entries that touch must be looked at.
    bool isBounded() const { return slack != kLimitless; }
    // All that may touch the eight places.
    const Offsets& offsets() const { return all; }
    bool has(std::int32_t offset) const { return all.low <= offset && offset <= all.high; }

    // Walks these offsets both ways from the guess, where the foot was found last, until none can
    // matter any more, and moves the guess; `look(offset)` gives the lanes' squared distance less
    // the limit. False when others than these may matter.
    template <class Look>
    __attribute__((always_inline)) bool scan(std::int32_t& guess, const Offsets& bounds,
                                             Look look) const {
        const std::int32_t middle = std::clamp(guess, bounds.low, bounds.high);
        std::int32_t low = middle, high = middle;
        Ints least = look(middle);
        const auto matters = [&](std::int32_t offset) __attribute__((always_inline)) {
            const Ints over = look(offset);
            least = lanes::least(least, over);
            return slack == kLimitless || any(over <= least + slack);
        };
        bool more = true;
        while (low > bounds.low && more) more = matters(--low);
        const bool lowDone = !more || low == all.low;
        more = true;
        while (high < bounds.high && more) more = matters(++high);
        guess = (low + high) / 2;
        return lowDone && (!more || high == all.high);
    }

    // A guess: the last offset, or the first, whose entries have these lanes well inside. Straight
    // runs only.
    std::int32_t insideGuess(const Places& e, unsigned wanted, bool atEnd) const {
        const auto edgeOf = [&](int lane) {
            const float m = static_cast<float>(e.place[lane]) - startMajor;
            const float n = static_cast<float>(e.minor[lane]) - startMinor;
            const float along = m * alongMajor + n * alongMinor;
            const float across = n * alongMajor - m * alongMinor;
            const auto entryFrom = [&](float way) {
                return dabs.entryFrom(
                    static_cast<std::int32_t>(std::floor(way * alongMajor + startMajor)));
            };
            std::int32_t entry = entryFrom(along);
            for (int i = 0; i < 2; ++i) {  // the radius is that of the edge, in the end
                const float r = dabs.radius[entryAt(entry)] - 1.5f;
                const float half = std::sqrt(std::max(r * r - across * across, 0.0f));
                entry = entryFrom(atEnd ? along + half : along - half) + (atEnd ? -1 : 1);
            }
            return entry - lane;
        };
        const std::int32_t one = edgeOf(std::countr_zero(wanted));
        const std::int32_t other = edgeOf(31 - std::countl_zero(wanted));
        return atEnd ? std::min(one, other) : std::max(one, other);
    }

    // The offsets from the first to the last that may touch one of these lanes; none when low >
    // high. On a straight line a dab touches a pixel when it lies within the root of
    // (r + 1)^2 - h^2 of the pixel's foot, h being how far the pixel is off the line.
    Offsets touchingOf(const Places& e, unsigned wanted) const {
        if (!straight) return all;
        const auto [along, across] = feetOf(e);
        const Floats half2 = lanes::all(touch2) - across * across;
        const Floats half = root(most(half2, lanes::all(0.0f)));
        const Ints from =
            floorOf((along - half) * lanes::all(alongMajor) + lanes::all(startMajor - 0.5f));
        const Ints to =
            floorOf((along + half) * lanes::all(alongMajor) + lanes::all(startMajor + 1.5f));
        Offsets o{all.high + 1, all.low - 1};
        for (unsigned rest = wanted & bits(half2 >= lanes::all(0.0f)); rest != 0;
             rest &= rest - 1) {
            const int i = std::countr_zero(rest);
            o.low = std::min(o.low, dabs.entryFrom(from[i]) - i);
            o.high = std::max(o.high, dabs.entryFrom(to[i]) - 1 - i);
        }
        return {std::max(o.low, all.low), std::min(o.high, all.high)};
    }

    // Of these offsets, those in a row whose hollow entries leave these lanes open for sure; none
    // when low > high. A lane is open while its third neighbours on both sides of the row are
    // interior, on a straight line for as long as it lies in both of two discs three pixels apart,
    // and while its row is not filled whole. The lanes lie off the canvas' sides as far.
    Offsets openOf(const Places& e, unsigned wanted, const Offsets& o) const {
        // Of the radii from one entry to another the smallest is that of an end of them.
        const double least = std::min(dabs.exactRadius[entryAt(o.low)],
                                      dabs.exactRadius[entryAt(o.high + kCount - 1)]);
        const auto [first, last] = openStretch(e, least);
        if ((bits(first <= last) & wanted) != wanted) return {0, -1};
        const Ints from = ceilOf(first * lanes::all(alongMajor) + lanes::all(startMajor + 0.1f));
        const Ints to = floorOf(last * lanes::all(alongMajor) + lanes::all(startMajor - 0.1f));
        Offsets open = o;
        for (unsigned rest = wanted; rest != 0; rest &= rest - 1) {
            const int i = std::countr_zero(rest);
            open.low = std::max(open.low, dabs.entryFrom(from[i]) - i);
            open.high = std::min(open.high, dabs.entryFrom(to[i]) - 1 - i);
        }
        return hollowOnes(open);
    }

  private:
    static constexpr double kBend = 0.1;  // of 1 - g^2, for what is not concave
    // Pixels within the circle from where on all is interior, of a quantised dab and seen from one.
    static constexpr double kInterior = 1.0 + 0.01 + 2.0 * ThickDabs::kQuantum;

    std::size_t entryAt(std::int32_t k) const {
        return ThickDabs::at(std::clamp(k, dabs.begin(), dabs.end() - 1));
    }

    // Of pixels: where on the line their feet are, and how far they are off it.
    struct Feet {
        Floats along, across;
    };
    Feet feetOf(const Places& e) const {
        const Floats m = toFloats(e.place) - lanes::all(startMajor);
        const Floats n = toFloats(e.minor) - lanes::all(startMinor);
        return {m * lanes::all(alongMajor) + n * lanes::all(alongMinor),
                n * lanes::all(alongMajor) - m * lanes::all(alongMinor)};
    }

    // Where on the line hollow dabs of this radius or more leave the pixels open.
    struct Stretch {
        Floats first, last;  // none where first > last
    };
    Stretch openStretch(const Places& e, double radius) const {
        const auto inner = static_cast<float>(std::max(radius - kInterior, 0.0));
        const auto [along, across] = feetOf(e);
        const auto rim = static_cast<float>(kHollowRim);
        const float rimAlong = rim * (dabs.isSteep() ? alongMinor : alongMajor);
        const float rimAcross = rim * (dabs.isSteep() ? alongMajor : -alongMinor);
        const auto halfChord = [&](Floats off) {  // none beyond the circle
            const Floats half2 = lanes::all(inner * inner) - off * off;
            return where(half2 > 0.0f, root(most(half2, lanes::all(0.0f))), lanes::all(-1e6f));
        };
        const Floats right = halfChord(across + lanes::all(rimAcross));
        const Floats left = halfChord(across - lanes::all(rimAcross));
        const Floats toRight = along + lanes::all(rimAlong), toLeft = along - lanes::all(rimAlong);
        // Up to so many rows from the dab's middle, which is rounded down, none is filled whole.
        const auto rows = static_cast<float>(std::floor(radius) - kWholeDepth - 1.0);
        const float slope = dabs.isSteep() ? alongMajor : alongMinor;
        const float rowsPerPixel = std::max(std::fabs(slope), 1e-6f);
        const Floats row = toFloats(dabs.isSteep() ? e.place : e.minor) -
                           lanes::all(dabs.isSteep() ? startMajor : startMinor);
        const Floats level = row * lanes::all((slope < 0.0f ? -1.0f : 1.0f) / rowsPerPixel);
        const Floats deep = lanes::all(rows / rowsPerPixel);
        return {most(most(toRight - right, toLeft - left), level - deep),
                least(least(toRight + right, toLeft + left), level + deep)};
    }

    // Of these offsets those whose entries are hollow; solid dabs come last.
    Offsets hollowOnes(Offsets o) const {
        const auto isHollow = [&](std::int32_t k) { return dabs.hollowRows[entryAt(k)] >= 0; };
        if (dabs.isForward()) {
            while (o.low <= o.high && !isHollow(o.high + kCount - 1)) --o.high;
        } else {
            while (o.low <= o.high && !isHollow(o.low)) ++o.low;
        }
        const bool allHollow = o.low <= o.high && isHollow(o.low) && isHollow(o.high + kCount - 1);
        return allHollow ? o : Offsets{0, -1};
    }
    const ThickDabs& dabs;
    const bool straight;
    std::int32_t slack = kLimitless;  // over the least, from which on an entry does not matter
    // Of a straight run: its first dab, and the direction of rising major coordinates.
    float startMajor, startMinor, alongMajor, alongMinor;
    float touch2;  // squared distance from which on a dab touches nothing
    std::int32_t fromEntry = ThickDabs::kBeyond, toEntry = ThickDabs::kBeyond;
    Offsets all{0, -1};
};

}  // namespace streakfall::thick

#include "shareForLines/simd/End.h"
