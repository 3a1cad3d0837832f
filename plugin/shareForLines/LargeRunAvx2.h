// LargeRunAvx2: a run of large dabs along a straight line, painted row by row as one body.
//
// Why the bits are those of dab after dab:
//  - All dabs of a run have one pen alpha, above 0, and no coverage gives more. A pixel that is
//    empty, or already has the pen's colour, or gets white from one of them, ends with the largest
//    alpha that reaches it; order and repetition do not count. The middle of the run, the core,
//    gets the pen itself.
//  - A pixel of another colour at the rim, below white, gets its merges one by one, in walk
//    order, from the dabs that plot it (LargeDabShape).
//  - A translucent run over pixels of another colour, where the core would mix again and again,
//    is painted dab by dab.
//  - Hollow dabs leave their middle open, but nearly every pixel inside one of them is painted by
//    the end of another one's row. RunRowsAvx2 tells the columns where that is not sure; there
//    each dab's row is looked at as a hollow one.
//
// Owner: the painter of one line. Needs a processor with AVX2.
#pragma once

#include <array>
#include <cstdint>

#include "shareForLines/ColumnSet.h"
#include "shareForLines/LargeDabAvx2.h"
#include "shareForLines/LineCanvas.h"
#include "shareForLines/RunOfDabs.h"
#include "shareForLines/RunRowsAvx2.h"

namespace streakfall {

template <class Depth>
class LargeRunAvx2 {
  public:
    using Pixel = typename Depth::Pixel;

    // Direction of the line, a unit vector.
    LargeRunAvx2(double directionX, double directionY) : dabs(directionX, directionY) {}

    // Takes a large dab that touches the canvas. False when it cannot go into this run: flush and
    // try again; if it is refused by an empty run, paint it by itself.
    bool add(const Dab& dab) { return dabs.add(dab); }

    // Paints the run with the pen, whose alpha is that of all its dabs, and empties it. There is
    // one dab at least. `single` paints the dabs of a run that cannot be painted as one.
    void flush(LineCanvas& canvas, const Pixel& pen, LargeDabAvx2<Depth>& single);

    bool empty() const { return dabs.count() == 0; }

  private:
    struct Block;
    // How the middles of hollow dabs are taken: for painted, or as they are.
    enum class Hollow { kPainted, kOpen };

    // A row of a dab: the columns of the canvas that it has inside, and those of them that it
    // leaves open.
    struct DabRow {
        std::int32_t y;  // -1 for none
        Range inside, open;
    };

    void prepare(const LineCanvas& canvas);
    bool meetsOthers(const LineCanvas& canvas, const Pixel& pen) const;
    void paintRow(LineCanvas& canvas, const Pixel& pen, std::int32_t y);
    void paintBlock(LineCanvas& canvas, const Pixel& pen, const Range& columns, std::int32_t y,
                    Hollow hollow);
    void paintBlocks(LineCanvas& canvas, const Pixel& pen, const Range& columns, std::int32_t y,
                     Hollow hollow);
    void paintUnsure(LineCanvas& canvas, const Pixel& pen, const Range& columns, std::int32_t y);
    ColumnSet paintedInside(const Range& columns, std::int32_t y);
    const DabRow& rowOf(std::int32_t k, std::int32_t y);
    unsigned touching(std::int32_t first, std::int32_t x, std::int32_t y, Hollow hollow) const;

    RunOfDabs dabs;
    RunRowsAvx2 rows;
    std::int32_t top = 0, bottom = -1;  // rows that the run may touch, inside the canvas
    std::int32_t canvasWidth = 0;
    // Per dab, single precision: middle, and squared radii of what it touches and of what it has
    // inside for certain; farthest row that it leaves open.
    static constexpr std::size_t kRoom = RunOfDabs::kCapacity + 8;
    alignas(32) std::array<float, kRoom> middleX, middleY, touch2, inside2, openRows;
    std::array<DabRow, RunOfDabs::kCapacity> dabRows;  // the row looked at last
};

}  // namespace streakfall
