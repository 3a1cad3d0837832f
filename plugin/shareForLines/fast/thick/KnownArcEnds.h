// KnownArcEnds: where the arcs of dabs end, worked out once for each place of the centre in its
// pixel as long as the radius stays, as it does along most of a line.
//
// Owner: the painter of thick strokes. Needs a processor with AVX2.
#pragma once

#include <array>
#include <cstddef>

#include "shareForLines/disc/CirclePath.h"
#include "shareForLines/simd/ArcEnds.h"

namespace streakfall {

class KnownArcEnds {
  public:
    // Good until the next call. 5 <= r <= 2048.
    const ArcEnds& of(const DabCentre& centre, double r) {
        const auto place = static_cast<std::size_t>(centre.fx * kFractions + centre.fy);
        if (radius[place] != r) {
            ends[place] = ArcEnds(centre, r);
            radius[place] = r;
        }
        return ends[place];
    }

  private:
    static constexpr std::int32_t kFractions = 17;  // 0 to 16 sixteenths of a pixel

    std::array<double, kFractions * kFractions> radius{};  // 0: none yet
    std::array<ArcEnds, kFractions * kFractions> ends;
};

}  // namespace streakfall
