// LargeRunAvx2: a run of large dabs along a straight line, painted row by row as one body.
//
// Why the bits are those of dab after dab:
//  - All dabs of a run have one pen alpha, above 0. A pixel that is empty, or already has the pen's
//    colour, or gets white from one of them, ends with the largest alpha that reaches it; order
//    and repetition do not count. The middle of the run, the core, gets the pen itself.
//  - A pixel of another colour at the rim, below white, gets its merges one by one, in walk
//    order, from the dabs that plot it (LargeDabShape).
//  - A translucent run over pixels of another colour, where the core would mix again and again,
//    is painted dab by dab.
//  - Hollow dabs leave their middle open, but each pixel inside one of them is painted by another:
//    it lies within three pixels of the dab's end of the row when the dab moves off it, or in a
//    solid dab at the line's end. That holds while the ends of hollow rows move by at most three
//    pixels from dab to dab; add() refuses dabs where they might move farther. And it takes more
//    dabs of the full alpha than reach a pixel (LineWalk::closesHollowDabs); the owner keeps the
//    hollow dabs of other lines away.
//
// Owner: the painter of one line. Needs a processor with AVX2.
#pragma once

#include <array>
#include <cstdint>

#include "shareForLines/AlphaByCoverage.h"
#include "shareForLines/LargeDabAvx2.h"
#include "shareForLines/LargeDabShape.h"
#include "shareForLines/LineCanvas.h"
#include "shareForLines/LineWalk.h"

namespace streakfall {

template <class Depth>
class LargeRunAvx2 {
  public:
    using Pixel = typename Depth::Pixel;

    // Direction of the line, a unit vector.
    LargeRunAvx2(double directionX, double directionY) : ux(directionX), uy(directionY) {}

    // Takes a large dab that touches the canvas. False when it cannot go into this run: flush and
    // try again; if it is refused by an empty run, paint it by itself.
    bool add(const Dab& dab);

    // Paints the run with the pen, whose alpha is that of all its dabs, and empties it. `single`
    // paints the dabs of a run that cannot be painted as one.
    void flush(LineCanvas& canvas, const Pixel& pen, LargeDabAvx2<Depth>& single);

    bool empty() const { return count == 0; }

  private:
    static constexpr std::int32_t kDabs = 128;
    static constexpr std::int32_t kSampling = 4;  // every fourth dab bounds the core

    struct Entry {
        LargeDabShape shape;
        Dab dab;
        std::int32_t times;            // dabs in a row with the same effect
        const std::uint8_t* coverage;  // by column
    };
    struct Interval {
        std::int32_t from, to;  // both included
    };
    struct Block;

    bool hollowIsWhole(const Dab& dab) const;
    void prepare(LineCanvas& canvas, const Pixel& pen);
    bool meetsOtherColors(LineCanvas& canvas, const Pixel& pen) const;
    Interval dabsNear(std::int32_t x, std::int32_t y) const;
    void bounds(std::int32_t y, Interval& core, Interval& reach) const;
    void paintRow(LineCanvas& canvas, const Pixel& pen, std::int32_t y);
    void paintRim(LineCanvas& canvas, const Pixel& pen, std::int32_t x, std::int32_t y);
    void fillCore(LineCanvas& canvas, const Pixel& pen, std::int32_t y, Interval core);

    double ux, uy;
    std::int32_t count = 0;
    std::int32_t top = 0, bottom = -1;  // rows that the run may touch, inside the canvas
    double widest = 0;                  // largest radius
    std::array<Entry, kDabs> dabs;
    std::array<std::array<std::uint8_t, kCoverageColumns>, kDabs> tables;
    std::int32_t tableCount = 0;
    // Per sample: centre and squared radii of the core and of the reach, single precision.
    std::int32_t samples = 0;
    alignas(32) std::array<float, kDabs / kSampling + 8> sampleX, sampleY, sampleCore, sampleReach;
    // First dab at each whole step of the run.
    std::array<std::int16_t, kDabs + 2> firstAtStep;
    std::int32_t steps = 0;
    AlphaByCoverage<Depth> alphas{};
};

}  // namespace streakfall
