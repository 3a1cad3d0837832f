// Paints one large dab row by row, eight pixels at a time: for dabs too small for a run to pay,
// and for what a run leaves alone, a wave and translucent paint over other colours.
//
// Pixel by pixel it does what the dab painter does; LargeDabShape tells which pixels.
#pragma once

#include <array>
#include <cstdint>

#include "shareForLines/AlphaByCoverage.h"
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
    // A row of the dab fits into 64 pixels.
    static constexpr double kMaxRadius = 29.0;
    static constexpr std::int32_t kBlocks = 8;  // of eight pixels

    void paintRow(LineCanvas& canvas, const Pixel& pen, std::int32_t y, bool hollow);

    LargeDabShape shape;
    double radius = 0;  // of the table; 0 before the first
    alignas(32) std::array<std::uint8_t, kCoverageColumns> coverage;
    AlphaByCoverage<Depth> alphas{};
};

}  // namespace streakfall
