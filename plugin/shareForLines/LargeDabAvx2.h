// Paints one large dab by itself: for what runs and batches leave alone, the odd dab between small
// ones, and translucent paint over other colours.
#pragma once

#include <array>
#include <cstdint>

#include "shareForLines/CoverageTable.h"
#include "shareForLines/LargeDabShape.h"
#include "shareForLines/LineCanvas.h"
#include "shareForLines/LineWalk.h"

namespace streakfall {

// Owner: the painter of one line; keeps the coverage of the radius before.
template <class Depth>
class LargeDabAvx2 {
  public:
    using Pixel = typename Depth::Pixel;

    // Needs a processor with AVX2. The dab is large and touches the canvas; pen.alpha is the
    // dab's own. What does not fit this way is painted by walking.
    void paint(LineCanvas& canvas, const Pixel& pen, const Dab& dab);

  private:
    LargeDabShape shape;
    double radius = 0;  // of the table; 0 before the first
    alignas(32) std::array<std::uint8_t, kCoverageColumns> coverage;
};

}  // namespace streakfall
