// Paints small dabs eight pixels of a row at a time.
//
// Why the bits are those of the pixel-by-pixel way: of a pixel's signed distance only the table
// column counts, a whole number. It is taken from the closed form of the distance, in single
// precision, as long as that lies farther from the next column than its error can reach; a row
// with a pixel nearer than that is worked out by the exact chain of additions. Coverage and merge
// are then the same integers.
//
// The walk puts many dabs on the place of the one before, but for rounding. Such twins are worked
// out once and merged twice.
#pragma once

#include <array>
#include <cstdint>

#include "shareForLines/AlphaByCoverage.h"
#include "shareForLines/CoverageTable.h"
#include "shareForLines/LineCanvas.h"
#include "shareForLines/LineWalk.h"
#include "shareForLines/SmallDabBox.h"

namespace streakfall {

// Owner: the painter of one line; keeps the coverage of the radius before.
template <class Depth>
class SmallDabAvx2 {
  public:
    using Pixel = typename Depth::Pixel;

    // Needs a processor with AVX2. The dab is small and touches the canvas; pen.alpha is the
    // dab's own, above 0. The dab may be held back until the next call.
    void paint(LineCanvas& canvas, const Pixel& pen, const Dab& dab);

    // Paints what is held back. Due before anything else touches the canvas and before the pen
    // changes.
    void flush(LineCanvas& canvas, const Pixel& pen);

  private:
    bool isTwin(const Dab& dab, const SmallDabBox& itsBox) const;
    void placeWindow(const SmallDabBox& box, std::int32_t size, std::int32_t width);
    void paintHeld(LineCanvas& canvas, const Pixel& pen, const Dab* twin);
    void prepare(double radius, typename Depth::Channel alpha);
    // kBlocks: vectors of eight pixels across the box; a small dab is at most 12 pixels wide.
    // twin: null, or a dab to merge after this one.
    template <int kBlocks>
    void paintRows(LineCanvas& canvas, const Pixel& pen, const Dab& dab, const SmallDabBox& box,
                   const Dab* twin);

    std::int32_t windowLeft = 0;  // column of the first lane
    bool holds = false;
    Dab held{};
    SmallDabBox heldBox{};
    double radius = 0;  // of the tables below; 0 before the first
    typename Depth::Channel penAlpha{};
    // Paint by column: the alpha itself in 8 bits, else the coverage.
    alignas(32) std::array<std::uint8_t, kCoverageColumns> paint_{};
    AlphaByCoverage<Depth> alphas{};  // beyond 8 bits
};

}  // namespace streakfall
