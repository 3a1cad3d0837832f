// ThickBounds: for each place along the major axis, how far dabs reach across it, and between
// which minor coordinates every pixel is inside one of them.
//
// Every few dabs one is sampled. A large dab has inside every pixel nearer to its centre than
// r - 1, and touches none farther off than r + 1. At one major coordinate the sampled discs are
// intervals, and as long as each overlaps those before it their union has no gap. Along a straight
// line it does where half of it is long enough. Where one lies apart, as with ramps on a wave, the
// place has no core.
//
// A dab between two samples, at most `gap` apart, lies within kBow of the line between them; so a
// point that it touches is nearer to one of the samples than the root of (r + 1)^2 + gap^2 / 4.
//
// Needs a processor with AVX2. Owner: the painter of thick strokes.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>

#include "shareForLines/disc/Range.h"
#include "shareForLines/fast/thick/ThickDabs.h"

namespace streakfall {

class ThickBounds {
  public:
    // Places that a run of dabs can have, and eight to read beyond.
    static constexpr std::int32_t kMaxPlaces = 2048;

    // `straight`: the dabs lie on a line. major, minor: the canvas, coordinates from the origin of
    // the dabs; bounds are limited to them.
    void find(const ThickDabs& dabs, bool straight, const Range& major, const Range& minor);

    const Range& places() const { return all; }
    // Of the place with this major coordinate. Reach: nothing beyond it is touched; empty where
    // nothing is. Core: inside some dab; empty, from > to, where that is not sure.
    Range reachAt(std::int32_t place) const { return at(reachFrom, reachTo, place); }
    Range coreAt(std::int32_t place) const { return at(coreFrom, coreTo, place); }

    // Limits what a place reaches.
    void limit(std::int32_t place, const Range& to) {
        const auto i = static_cast<std::size_t>(place - all.from);
        reachFrom[i] = to.from;
        reachTo[i] = to.to;
        coreFrom[i] = std::max(coreFrom[i], to.from);
        coreTo[i] = std::min(coreTo[i], to.to);
    }

    using PerPlace = std::array<std::int32_t, kMaxPlaces + 8>;
    alignas(32) PerPlace reachFrom, reachTo, coreFrom, coreTo;  // by place less places().from

  private:
    Range at(const PerPlace& from, const PerPlace& to, std::int32_t place) const {
        const auto i = static_cast<std::size_t>(place - all.from);
        return {from[i], to[i]};
    }
    void sample(const ThickDabs& dabs, std::int32_t stride, double bow);

    using PerSample = std::array<float, static_cast<std::size_t>(ThickDabs::kCapacity + 2)>;
    Range all = kNone;
    std::int32_t count = 0;
    PerSample major, minor, core2, reach2, reach;
};

}  // namespace streakfall
