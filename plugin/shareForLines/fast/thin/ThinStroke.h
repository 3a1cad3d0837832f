// ThinStroke: paints small dabs a stretch of the walk at a time: row after row, eight pixels of it
// at once.
//
// Why the bits are those of the dab-by-dab, pixel-by-pixel way:
//
// - Of a pixel's signed distance only the table column counts, a whole number. It is taken from
//   the closed form of the distance, in single precision, as long as that lies farther from the
//   next column than its error can reach; a dab with a pixel nearer than that is worked out by
//   the exact chain of additions. Coverage and merge are then the same integers.
// - A pixel sees only the paints that reach it, so the pixels may be taken in any order as long as
//   each gets its paints in walk order.
// - Within a stretch pen and pen alpha stay. On a pixel that is empty or of the pen's colour the
//   largest alpha is all that its paints leave, and one full alpha outdoes all others whatever the
//   colour. Alpha grows with coverage, so one merge of the largest coverage does; only where one
//   of eight pixels holds another colour is every merge replayed.
// - To the left of its box and above it a dab's coverage is 0 anyway. To the right and below, the
//   box cuts it off, and so does the buffer everywhere.
//
// The walk puts many dabs on the place of the one before, but for rounding. Such twins share a
// disc: they are worked out once and merged as often as they come.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "shareForLines/canvas/CanvasView.h"
#include "shareForLines/fast/WhatShows.h"
#include "shareForLines/path/LineWalk.h"

namespace streakfall {

namespace avx2 {
class Box;
}

// Owner: the painter of a frame.
template <class Depth>
class ThinStroke {
  public:
    using Pixel = typename Depth::Pixel;

    // Both outlive it.
    ThinStroke(const CanvasView& view, const WhatShows& visible) : canvas(view), shows(visible) {}

    // Needs a processor with AVX2. The dab is small and touches the canvas; pen.alpha is the
    // dab's own, not 0. The dab is held back until its stretch is painted.
    void add(const Pixel& pen, const Dab& dab);

    // The same for dabs one after the other.
    void add(const Pixel& pen, std::span<const Dab> dabsInOrder) {
        for (const Dab& dab : dabsInOrder) add(pen, dab);
    }

    // Paints what is held back. Due before anything else touches the canvas and before the pen
    // changes.
    void flush(const Pixel& pen);
    // Forgets it.
    void drop() { discCount = dabCount = 0; }

  private:
    static constexpr std::size_t kDiscs = 32;  // as a set has bits
    static constexpr std::size_t kDabs = 2 * kDiscs;
    using Discs = std::uint32_t;                 // a set, the walk's first in the lowest bit
    using Bytes = std::array<std::uint8_t, 32>;  // by disc, or by table column

    // Pixels count from the middle of the stretch's square.
    struct Disc {
        float x, y;         // centre
        float scale, base;  // table column in 4096ths: scale x distance squared + base
        float right;        // last column of pixels
        std::int32_t dabs;  // that it stands for
        const Bytes* coverage;
    };
    struct Block;

    void start(const Dab& dab, const avx2::Box& box);
    bool fits(const Dab& dab, const avx2::Box& place) const;
    void prepare();
    void paintRow(const Pixel& pen, std::int32_t row) const;
    void paintBlock(const Pixel& pen, const Block& block) const;
    template <class Pixels>
    void mergeCovered(Pixels& pixels, const Pixel& pen, const Block& block) const;
    template <class Pixels>
    void mergeExactly(Pixels& pixels, const Pixel& pen, const Block& block) const;

    const CanvasView& canvas;
    const WhatShows& shows;

    // The square: places in it are 0 to 127.
    std::int32_t squareX = 0, squareY = 0;  // the pixel at place 0, 0
    bool steep = false;                     // all dabs are so thin that they take the exact way
    // Of the dab before: its box in the square, a byte each, and its radius as the table takes it.
    std::uint32_t lastPlace = 0, lastKey = 0;

    std::size_t dabCount = 0, discCount = 0;
    std::array<Dab, kDabs> dabs;  // place and radius
    std::array<std::uint8_t, kDiscs> firstDab;
    alignas(32) std::array<std::uint32_t, kDiscs> places;  // box of a disc
    alignas(32) Bytes left, top, right, bottom;            // the same
    std::int32_t guard = 0;                                // of a closed form, 4096ths of a column
    std::array<Disc, kDiscs> discs;
    alignas(32) std::array<Bytes, kDiscs> coverages;  // of a radius
};

}  // namespace streakfall
