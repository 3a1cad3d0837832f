// ThickStroke: large dabs one after the other along a path, painted as one body.
//
// Why the bits are those of dab after dab:
//  - The pen's alpha is above 0, no coverage gives more, and along the run it rises or falls or
//    stays. A pixel that is empty, or already has the pen's colour, or gets white from one of the
//    dabs, ends with the largest alpha that reaches it; order and repetition do not count. The core
//    of a run of one alpha, inside some dab for certain (ThickBounds), gets the pen itself; where
//    the alpha varies, no dab past the first one met from the high side that has a pixel inside can
//    give more.
//  - Any other pixel gets its merges one by one, in walk order, from the dabs that paint it
//    (ArcEnds.h), until its colour rests (EightPixels); from there on the largest alpha counts.
//  - Hollow dabs leave their middle open, but nearly every pixel inside one of them is painted by
//    another. The others (OpenPixels) are worked out by their merges.
//
// Owner: the painter of lines. Needs a processor with AVX2.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "shareForLines/canvas/CanvasView.h"
#include "shareForLines/fast/OpenPixels.h"
#include "shareForLines/fast/WhatShows.h"
#include "shareForLines/fast/thick/ThickBounds.h"
#include "shareForLines/fast/thick/ThickDabs.h"

namespace streakfall {

template <class Depth>
class ThickStroke {
  public:
    using Pixel = typename Depth::Pixel;

    // All outlive it. opens: what the line at hand may leave open.
    ThickStroke(const CanvasView& view, const WhatShows& visible, const OpenPixels& opens)
        : canvas(view), shows(visible), open(opens) {}

    // Before the first dab of a line. `straightLine`: no wave.
    void start(bool straightLine) {
        straight = straightLine;
        count = 0;
    }

    // Whether a large dab can be painted here at all.
    static bool takes(const Dab& dab) { return dab.radius <= ThickDabs::kMaxRadius; }
    // Adds one that can, and touches the canvas. False when it cannot go into this run: flush and
    // add it then.
    bool add(const Dab& dab, typename Depth::Channel alpha);

    // Paints the run, if there is one, with the colour of the pen and empties it.
    void flush(const Pixel& pen);
    // Forgets it.
    void drop() { count = 0; }

  private:
    bool goesOn(const Dab& dab) const;
    bool isPlainEverywhere(const Pixel& pen) const;
    void place();
    void findBounds();
    void paintCore(const Pixel& pen);
    void paintSteepCore(const Pixel& pen) const;

    const CanvasView& canvas;
    const WhatShows& shows;
    const OpenPixels& open;
    bool straight = true;
    bool steep = false;    // y is the major axis
    double advance = 0.0;  // sign of the way along it; 0 before the second dab
    std::int32_t count = 0;
    std::int32_t rising = 0;  // 1 or -1 when alphas rise or fall along the way
    std::array<Dab, ThickDabs::kCapacity> held;
    std::array<typename Depth::Channel, ThickDabs::kCapacity> heldAlphas;
    std::array<std::int32_t, ThickDabs::kCapacity> payloads;
    std::vector<KeptPixel<Depth>> kept;
    std::vector<std::int32_t> entered;  // by row: the column where it enters the core
    ThickDabs dabs;
    ThickBounds bounds;
};

}  // namespace streakfall
