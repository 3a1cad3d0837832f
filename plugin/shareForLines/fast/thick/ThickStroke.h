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
//  - A pixel that rests at the run's alpha or more takes nothing from it. Such ones at the ends of
//    a place are left out beforehand: a tight wave goes over most of its pixels many times.
//  - Where all dabs of a run paint their core, it is painted before the rim of the run before.
//    Most of the round end of a run lies in the core of the next one, and what that gives white, or
//    the alpha that it has where all is plain, needs no merges.
//
// Owner: the painter of lines. Needs a processor with AVX2.
#pragma once

#include <array>
#include <cstdint>
#include <utility>
#include <vector>

#include "shareForLines/canvas/CanvasView.h"
#include "shareForLines/fast/OpenPixels.h"
#include "shareForLines/fast/WhatShows.h"
#include "shareForLines/fast/WholeRows.h"
#include "shareForLines/fast/thick/ThickRim.h"
#include "shareForLines/fast/thick/ThickRun.h"

namespace streakfall {

template <class Depth>
class ThickStroke {
  public:
    using Pixel = typename Depth::Pixel;

    // All outlive it. opens: what the line at hand may leave open.
    ThickStroke(const CanvasView& view, const WhatShows& visible, const OpenPixels& opens)
        : canvas(view), shows(visible), open(opens) {}
    ThickStroke(const ThickStroke&) = delete;  // it points into itself
    ThickStroke& operator=(const ThickStroke&) = delete;

    // Before the first dab of a line. `straightLine`: no wave.
    void start(bool straightLine) {
        straight = straightLine;
        drop();
    }

    // Whether a large dab can be painted here at all.
    static bool takes(const Dab& dab) { return dab.radius <= ThickDabs::kMaxRadius; }
    // Adds one that can, and touches the canvas. Runs that it does not go into are painted with the
    // colour of the pen.
    void add(const Dab& dab, const Pixel& pen);

    // Paints what there is with the colour of the pen.
    void flush(const Pixel& pen);
    // Forgets it.
    void drop() {
        now->clear();
        before->clear();
    }

  private:
    using Run = ThickRun<Depth>;
    using Rows = WholeRows<Depth>;

    void endRun(const Pixel& pen);
    void paintRim(Run& run, const Pixel& pen, const thick::Manner& manner);
    void paintBefore(const Pixel& pen);
    static bool limitToUndone(Run& run, const Rows& rows);
    bool isPlainEverywhere(const Run& run, const Rows& rows) const;
    void paintCore(const Run& run, const Rows& rows);
    void paintSteepCore(const Run& run, const Rows& rows) const;

    const CanvasView& canvas;
    const WhatShows& shows;
    const OpenPixels& open;
    bool straight = true;
    KnownArcEnds arcs;
    Run one{arcs}, other{arcs};
    Run *now = &one, *before = &other;  // before: of which the rim is not painted yet
    std::vector<KeptPixel<Depth>> kept;
    std::vector<std::int32_t> entered;  // by row: the column where it enters the core
};

}  // namespace streakfall
