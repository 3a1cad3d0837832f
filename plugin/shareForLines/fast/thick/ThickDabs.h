// ThickDabs: large dabs one after the other along a path that runs one way along an axis of the
// canvas, its major axis, as arrays that vectors read.
//
// Entries lie in the order of their major coordinate, whichever way the pen went, so that eight
// entries in a row belong to about eight neighbouring columns (or rows, where the major axis is
// y). Coordinates are pixels from an origin near the dabs; centres are quantised as the walk
// quantises them. Beyond both ends lie entries that touch nothing.
//
// Owner: the painter of thick strokes; used again by the next run of dabs.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "shareForLines/fast/thick/CoverageTables.h"
#include "shareForLines/fast/thick/KnownArcEnds.h"
#include "shareForLines/path/LineWalk.h"

namespace streakfall {

class ThickDabs {
  public:
    static constexpr std::int32_t kCapacity = 512;
    static constexpr std::int32_t kBeyond = 16;   // entries that touch nothing, at each end
    static constexpr double kMaxRadius = 700.0;   // keeps offsets below 2048 pixels, see centre
    static constexpr double kMaxStep = 1.05;      // from dab to dab, pixels
    static constexpr double kLeastAdvance = 0.5;  // of a step, along the major axis, as a part
    static constexpr double kMaxGrowth = 0.75;    // of the radius, from dab to dab
    static constexpr double kQuantum = 0.0442;    // a quantised centre is off by less, pixels
    static_assert((kCapacity * kMaxStep + 2.0 * kMaxRadius) * 16.0 < 32768.0);  // halves of 16 bits

    template <class T>
    using PerEntry = std::array<T, static_cast<std::size_t>(kCapacity + 2 * kBeyond)>;

    // known: outlives it.
    explicit ThickDabs(KnownArcEnds& known) : arcs(known) {}

    // Takes the dabs of a run, in walk order; there is one at least. `steep`: y is the major axis.
    // alphas: of each dab, as EightPixels::payload.
    void place(std::span<const Dab> dabs, std::span<const std::int32_t> alphas, bool steep);

    std::int32_t begin() const { return kBeyond; }
    std::int32_t end() const { return last; }
    // False where the pen went against the major axis.
    bool isForward() const { return forward; }
    bool isSteep() const { return steepAxis; }
    // True when the entries from `from` to `to` have one radius.
    bool haveOneRadius(std::int32_t from, std::int32_t to) const {
        return changes[at(from)] == changes[at(to)];
    }
    // True when they share one table of coverages.
    bool haveOneTable(std::int32_t from, std::int32_t to) const {
        return coverage[at(from)] == coverage[at(to)];
    }
    // The first entry whose major coordinate is not below it; end() where there is none.
    std::int32_t entryFrom(std::int32_t place) const {
        const std::int32_t p = place - firstPlace;
        if (p >= places) return last;
        return p <= 0 ? begin() : entryAt[static_cast<std::size_t>(p)];
    }
    // Works out where the arcs of these entries end, unless that is known.
    void needArcs(std::int32_t from, std::int32_t count) {
        for (std::int32_t k = from; k < from + count; ++k) {
            if (!hasArcs[at(k)]) findArcs(k);
        }
    }

    static std::size_t at(std::int32_t entry) { return static_cast<std::size_t>(entry); }

    std::int32_t originMajor = 0, originMinor = 0;  // canvas pixels
    double largest = 0, smallest = 0;               // radius
    double mostGrowth = 0;                          // of the radius, from entry to entry
    bool anyHollow = false;

    // Centre, two halves of 16 bits, the major coordinate in the lower one: 1/16 pixels from the
    // origin. At most (512 steps + 2 x 700) x 16 < 2^15 from each other and any pixel touched.
    alignas(32) PerEntry<std::int32_t> centre;
    // A pixel is inside while its squared distance, in 1/256 pixels squared, is below it.
    alignas(32) PerEntry<std::int32_t> limit;
    // Table column of a pixel, in 4096ths: (squared distance - limit) x scale + base.
    alignas(32) PerEntry<float> columnScale, columnBase;
    // Where its coverage by column begins in coverages(), in bytes.
    alignas(32) PerEntry<std::int32_t> coverage;
    const std::uint8_t* coverages() const { return tables.bytes(); }
    // Of arcs: first and last column or row, two halves of 16 bits, from the origin. Minor arcs
    // straddle the circle along the minor axis and are told by their major coordinates; "far" is
    // the side of greater minor coordinates. Major arcs the other way round.
    alignas(32) PerEntry<std::int32_t> minorFar, minorNear, majorFar, majorNear;
    // Of odd dabs (ArcEnds): the two pixels, as centre, else kNoPixel.
    alignas(32) PerEntry<std::int32_t> extra, once;
    // The pen's alpha, as EightPixels::payload; of a hollow dab, rows from the middle one, up to
    // which it leaves open what its ends do not hold, else -1; and the middle row, canvas pixels.
    alignas(32) PerEntry<std::int32_t> alpha, hollowRows, middleRow;
    PerEntry<float> major, minor, radius;      // rounded; pixels from the origin
    PerEntry<double> exactRadius, twinRadius;  // of the first and the last dab of the entry
    PerEntry<std::uint8_t> times;              // dabs on one spot, but for rounding: 1 or more

  private:
    static constexpr std::int32_t kNoPixel = 1;  // pixels lie at whole sixteens

    struct Placed {
        std::int32_t centre, limit;
        float columnScale, columnBase, major, minor;
    };
    Placed placeOne(const Dab& dab) const;
    void store(std::int32_t entry, const Placed& placed, const Dab& dab, std::int32_t pen);
    void closeEnds();
    void reverse();
    void findArcs(std::int32_t entry);
    void countPlaces();

    std::int32_t last = kBeyond;
    bool forward = true, steepAxis = false;
    PerEntry<bool> hasArcs;
    std::int32_t firstPlace = 0, places = 0;
    std::array<std::int32_t, static_cast<std::size_t>(kCapacity + 2)> entryAt;
    PerEntry<std::int32_t> changes;  // of the radius, up to the entry
    CoverageTables<kCapacity> tables;
    KnownArcEnds& arcs;
};

}  // namespace streakfall
