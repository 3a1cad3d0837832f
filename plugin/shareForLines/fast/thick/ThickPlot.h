// ThickPlot: what eight entries of a run of dabs do to eight pixels, one each. ArcEnds.h tells
// what; here in lanes, with a dab of its own in every lane.
//
// Owner: the painter of a run. Needs a processor with AVX2.
#pragma once

#include <algorithm>
#include <bit>
#include <cstdint>

#include "shareForLines/disc/HollowRow.h"
#include "shareForLines/fast/thick/ThickDabs.h"
#include "shareForLines/path/StrokeShape.h"
#include "shareForLines/simd/Begin.h"
#include "shareForLines/simd/Lanes.h"
#include "shareForLines/simd/Vectors.h"

namespace streakfall::thick {

using namespace lanes;

// How far rounding moves squared distances less squared radii, pixels squared: that of the centre,
// of which each coordinate is off by 1/32 at the most, and the bow of a ramp's curve.
inline double centreNoise(double radius) { return 0.177 * (radius + 1.0); }
inline double bowNoise(double radius) { return 2.0 * kRampBow * radius * radius; }

inline constexpr std::int32_t kInside = avx2::kInterior;
inline constexpr std::int32_t kLimitless = 1 << 30;  // farther than any pixel

// Eight pixels, neighbours along the major axis.
struct Places {
    Ints place, minor;  // major and minor coordinates, pixels from the origin of the dabs
    Ints pixel;         // as ThickDabs::centre

    void find() { pixel = pairOf(place << 4, minor << 4); }
};

struct Plot {
    Ints over;     // squared distance less limit, 1/256 pixels squared
    Ints inside;   // all ones within the circle
    Ints plotted;  // all ones where the walk round the dab plots the pixel
    Ints twice;    // and where two arcs do
};

struct Cover {
    Ints coverage;  // 0, kInside, or that of an edge pixel
    Ints twin;      // the same of the entry's last dab
    Ints twice, over;
    Ints open;  // all ones where a hollow dab leaves the pixel open
};

class ThickPlot {
  public:
    // The dabs outlive it. width: of the canvas, pixels.
    ThickPlot(ThickDabs& run, std::int32_t width)
        : dabs(run),
          canvasWidth(width),
          reachOver(static_cast<std::int32_t>(256.0 * 2.0 * kNoCoverage * run.largest) + 1),
          insideOver(-static_cast<std::int32_t>(
              256.0 * (2.0 * run.largest + centreNoise(run.largest) + bowNoise(run.largest)))),
          noiseOver(static_cast<std::int32_t>(
                        256.0 * (centreNoise(run.largest) + 2.0 * bowNoise(run.largest))) +
                    1),
          faintOver(static_cast<std::int32_t>(256.0 * 2.0 * kFaint * run.largest) + 1),
          equalOver(static_cast<std::int32_t>(256.0 * (0.6 * run.largest + 5.0))) {}

    // Lane i takes entry offset + i.
    __attribute__((always_inline)) Plot plotOf(const Places& e, std::int32_t offset) const {
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
            p.plotted = byMinor | byMajor | (e.pixel == lanes::load(&dabs.extra[k]));
            p.twice = byMinor & byMajor & (e.pixel != lanes::load(&dabs.once[k]));
        }
        return p;
    }

    // True when these lanes lie so deep inside both of the offsets' entries that those between,
    // along a straight line, have them inside as well, and none plots them.
    bool areDeepInside(const Places& e, Ints wanted, std::int32_t low, std::int32_t high) const {
        return !any((most(overOf(e, low), overOf(e, high)) > insideOver) & wanted);
    }

    // What eight entries do to eight pixels, one each.
    template <bool kHollow>
    __attribute__((always_inline)) Cover coverOf(const Places& e, std::int32_t offset) {
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
    Ints openOf(const Places& e, const Plot& p, std::size_t k, std::int32_t rim) {
        const Ints x = (dabs.isSteep() ? e.minor + dabs.originMinor : e.place + dabs.originMajor);
        const Ints y = (dabs.isSteep() ? e.place + dabs.originMajor : e.minor + dabs.originMinor);
        const Ints rows = magnitude(y - lanes::load(&dabs.middleRow[k]));
        Ints open = (rows <= lanes::load(&dabs.hollowRows[k]) - (rim - kHollowRim)) & (x >= rim) &
                    (x < canvasWidth - rim) & p.inside;
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
            Places third = e;
            if (dabs.isSteep()) {
                third.minor = e.minor + side;
            } else {
                third.place = e.place + side;
            }
            third.find();
            const Plot q = plotOf(third, static_cast<std::int32_t>(k));
            open &= q.inside & ~q.plotted;
        }
        return open;
    }

    // Of pixels that eight entries plot: the table's column, in 4096ths, good to less than one; it
    // falls as coverage rises.
    Ints fineColumns(const Plot& p, std::int32_t offset) const {
        const std::size_t k = ThickDabs::at(offset);
        return fineColumns(p.over, lanes::load(&dabs.columnScale[k]),
                           lanes::load(&dabs.columnBase[k]));
    }
    // True where less than one might move it to the next column.
    static Ints isUnsure(Ints fine) { return ((fine + 1) & 4095) < 3; }
    // Coverages by such columns in the table of this entry.
    Ints coverageOf(Ints fine, std::size_t entry) const {
        return ByteTable(dabs.coverages() + dabs.coverage[entry])[fine >> 12];
    }

    // Of pixels that are plotted, all by dabs of the radius of this entry.
    Ints edgeOf(Ints over, std::size_t entry) const {
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
        return coverageOf(column << 12, entry);
    }

    // Moves both ends of the offsets up to entries that touch one of these lanes.
    void keepTouching(const Places& e, Ints wanted, std::int32_t& low, std::int32_t& high) const {
        const Ints bound = where(wanted, touchingBound(), lanes::all(-kLimitless));
        while (low <= high && !any(overOf(e, low) <= bound)) ++low;
        while (low <= high && !any(overOf(e, high) <= bound)) --high;
    }

    // Beyond it a dab touches nothing.
    Ints touchingBound() const { return lanes::all(reachOver); }
    // Along a straight line, away from a dab that is nearer, none touches behind one beyond it:
    // distances rise there but for the noise of either of two dabs.
    Ints pastTouchingBound() const { return lanes::all(reachOver + noiseOver); }
    // The same for coverages above a third.
    Ints pastFaintBound() const { return lanes::all(faintOver + noiseOver); }
    // Of dabs of one radius, of which `least` is the nearest: beyond it none gives more coverage.
    // Of those that plot a pixel inside them the nearest gives the most. But another may have it
    // interior, being up to 0.6 r + 5 farther: that takes a whole pixel to the circle along an
    // axis, the way through which is 0.71 to 1 pixel. Where the pixel lies outside of all of them,
    // any that touches counts: the nearest may leave a corner between two arcs.
    Ints equalBound(Ints least) const {
        const Ints touching = touchingBound();
        return where(least < 0, lanes::least(least + equalOver, touching), touching);
    }

    Ints overOf(const Places& e, std::int32_t offset) const {
        const std::size_t k = ThickDabs::at(offset);
        return pairSquares(pairDifference(e.pixel, lanes::load(&dabs.centre[k]))) -
               lanes::load(&dabs.limit[k]);
    }

  private:
    // Columns of a table of 4096ths that single precision tells for sure: the sum is below 1024 r
    // between columns 0 and 32, exact, and what is rounded, below 2^17 4096ths, has an error of
    // less than 0.05; with the rounding to whole ones less than 1.
    static Ints fineColumns(Ints over, Floats scale, Floats base) {
        const Floats fine = toFloats(over) * scale + base;
        return rounded(least(most(fine, lanes::all(0.5f * 4096.0f)), lanes::all(31.5f * 4096.0f)));
    }

    // The distance formula as it is defined, on a sum that is exact.
    static std::int32_t exactColumn(std::int32_t over, std::int32_t limit, double r) {
        return coverageColumn(((over + limit) / 256.0 - r * r) / (2.0 * r));
    }

    // Coverage by column, each lane of its own entry.
    Ints lookUp(std::size_t k, Ints column) const {
        if (dabs.coverage[k] == dabs.coverage[k + kCount - 1]) {
            return ByteTable(dabs.coverages() + dabs.coverage[k])[column];
        }
        return byteAt(dabs.coverages(), lanes::load(&dabs.coverage[k]) + column);
    }

    ThickDabs& dabs;
    const std::int32_t canvasWidth;
    const std::int32_t reachOver;   // beyond it a dab touches nothing
    const std::int32_t insideOver;  // up to it a pixel is a pixel or more inside
    const std::int32_t noiseOver;   // between distances from two dabs, see centreNoise
    const std::int32_t faintOver;   // beyond it a dab gives less than a third of its alpha
    const std::int32_t equalOver;   // see equalBound
};

}  // namespace streakfall::thick

#include "shareForLines/simd/End.h"
