// RunRowsAvx2: what a run of dabs does to whole rows.
//
// Every few dabs one is sampled. A row of a circle is an interval about its middle; those of the
// samples, well inside the circle, unite to the core, in which every pixel is inside some dab, and
// those well outside of it to the reach. Along a straight line with a radius that is a concave
// function (as the ramps are) half the width of the row is concave as well, so the samples that
// have a row follow one another, and their intervals leave no gap.
//
// A hollow dab leaves the middle of its rows to other dabs, but for kHollowRim pixels at both
// ends. A pixel is painted as such an end moves over it, unless the end moves by more than that
// from dab to dab. It moves by
//
//   |ux| + (|uy| |d| + growth r) / c + (1 + |d| / c) / 16
//
// with d the row's distance from the middle, c half its width and growth that of the radius; the
// last part is for quantised centres. Where c is large enough the row is slow, and so are rows at
// the top and bottom, which are painted whole. Of the pixels inside some dab, unsure are only those
// that the first and the last slow sample both hold inside: every other one is entered or left by a
// slow end. (An end moves fast only while the row grows at its begin or shrinks at its end, outward
// or inward at both sides.) Dabs that are not hollow leave nothing unsure.
#pragma once

#include <array>
#include <cstdint>

#include "shareForLines/Range.h"
#include "shareForLines/RunOfDabs.h"

namespace streakfall {

struct RunRow {
    Range core;    // inside some dab for certain
    Range reach;   // what lies beyond is untouched for certain
    Range unsure;  // of the reach: pixels that all dabs that hold them may have left open
};

// Needs a processor with AVX2. Owner: the run's painter.
class RunRowsAvx2 {
  public:
    // `run` is not empty and outlives the rows.
    void prepare(const RunOfDabs& run);
    RunRow row(std::int32_t y) const;

  private:
    static constexpr std::int32_t kLeastStride = 4;  // dabs from sample to sample
    static constexpr std::int32_t kMaxSamples = RunOfDabs::kCapacity / kLeastStride + 2;
    using Samples = std::array<float, kMaxSamples + 8>;

    static float slowFrom2(const RunOfDabs& run, double r, double growth);
    void addSample(const RunOfDabs& run, std::int32_t k, double reach, double growth);

    const RunOfDabs* dabs = nullptr;
    std::int32_t count = 0, stride = kLeastStride;
    float leastChord2 = 0;  // half a core interval, squared, from which on they overlap
    // Middle, and squared: radius of the core, of the reach, of the circle; half the width of a
    // slow row. Pixels.
    alignas(32) Samples middleX, middleY, core2, reach2, circle2, slow2;
    alignas(32) Samples solidCore2;  // negative for a hollow dab
};

}  // namespace streakfall
