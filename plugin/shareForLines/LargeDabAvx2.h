// Paints one large dab row by row, eight pixels at a time: for dabs too small for a run to pay,
// and for what a run leaves alone, a wave and translucent paint over other colours.
//
// Pixel by pixel it does what the dab painter does; LargeDabShape tells which pixels:
//
//  - In a row that only steep arcs cross, two pixels are plotted at each end, the last one inside
//    the circle and its neighbour; SteepRowsAvx2 finds them for eight rows at once.
//  - Other rows, and rows that the canvas cuts off, are looked at pixel by pixel at their ends;
//    what lies well inside the circle is interior for certain.
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
    class Brush;

    void paintSteepRows(const Brush& brush, std::int32_t from, std::int32_t to) const;

    LargeDabShape shape;
    double radius = 0;  // of the table; 0 before the first
    alignas(32) std::array<std::uint8_t, kCoverageColumns> coverage;
};

}  // namespace streakfall
