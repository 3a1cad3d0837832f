// LargeBatchAvx2: large dabs one after the other along any path, painted as one body.
//
// Why the bits are those of dab after dab:
//  - All dabs of a batch have one pen alpha, above 0, and no coverage gives more. A pixel that one
//    of them paints at that alpha, inside its circle, ends as the pen itself when the alpha is
//    white, whatever it meets before and after. So it does at any alpha, unless it holds more
//    already, where all pixels around are empty or have the pen's colour: merging is a maximum of
//    alphas then.
//  - These pixels are collected first, in a set (RowEndsAvx2 tells the interiors of rows; of a
//    hollow dab's only the rims count). A dab's row then is painted only when a pixel that it may
//    touch is not in the set, dab after dab in walk order. Along a stroke that leaves the rows at
//    its two sides.
//  - What else such a row paints lies in the set, which gets its own in the end.
//  - A translucent batch over pixels of another colour is painted dab by dab.
//
// Owner: the painter of one line. Needs a processor with AVX2.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "shareForLines/CoverageTables.h"
#include "shareForLines/LargeDabAvx2.h"
#include "shareForLines/LineCanvas.h"
#include "shareForLines/LineWalk.h"
#include "shareForLines/Range.h"
#include "shareForLines/RowsInside.h"

namespace streakfall {

template <class Depth>
class LargeBatchAvx2 {
  public:
    using Pixel = typename Depth::Pixel;

    // Takes a large dab that touches the canvas. False when the batch is full, flush and try
    // again, or when the dab is irregular: if it is refused by an empty batch, paint it by itself.
    // All dabs of a batch have one alpha.
    bool add(const Dab& dab, typename Depth::Channel alpha);

    // Paints the batch with the pen, whose alpha is that of all its dabs, and empties it. There is
    // one dab at least. `single` paints the dabs of a batch that cannot be painted as one. May
    // throw when memory is short.
    void flush(LineCanvas& canvas, const Pixel& pen, LargeDabAvx2<Depth>& single);

    bool empty() const { return count == 0; }

  private:
    static constexpr std::int32_t kCapacity = 256;

    struct Entry {
        LargeDabShape shape;
        Dab dab;
        const std::uint8_t* coverage;  // by column
    };

    struct Box {
        Range columns, rows;
    };

    std::span<const Entry> held() const {
        return {entries.data(), static_cast<std::size_t>(count)};
    }
    Box box(const LineCanvas& canvas) const;
    void cover(LineCanvas& canvas, const Pixel& pen, const Entry& entry);
    void paintRest(LineCanvas& canvas, const Pixel& pen, const Entry& entry);

    std::int32_t count = 0;
    std::array<Entry, kCapacity> entries;
    CoverageTables<kCapacity> tables;
    RowsInside inside;        // of the dab at hand
    Range unsettled = kNone;  // rows that the batch at hand may change
};

}  // namespace streakfall
