// FramePainter: paints lines, each dab by the fastest way that leaves the bits of the plain one,
// and holds the scratch that all lines of a frame share.
//
// Owner: the trace of a frame's lines; made on the heap, since it takes some 300 KiB. One thread.
#pragma once

#include <span>

#include "lines/LineRecord.h"
#include "shareForLines/fast/OpenPixels.h"
#include "shareForLines/fast/WhatShows.h"
#include "shareForLines/fast/thick/ThickStroke.h"
#include "shareForLines/fast/thin/ThinStroke.h"
#include "shareForLines/path/LineWalk.h"
#include "shareForLines/path/Stroke.h"
#include "shareForLines/plain/DabCanvas.h"

namespace streakfall {

template <class Depth>
class FramePainter {
  public:
    using Pixel = typename Depth::Pixel;

    // The canvas outlives it.
    explicit FramePainter(DabCanvas& lineCanvas);

    // Looks at all lines before the first one is painted, for what of each can be seen in the end.
    // `alpha`: of all pens.
    void lookAhead(Stroke<Depth>& stroke, std::span<const LineRecord> lines,
                   typename Depth::Channel alpha);
    // The next line to be painted has this number in that list.
    void at(std::size_t line) { shows.at(line); }

    // Paints one line with the stroke's pen, of some alpha, and its thickness, above 0.
    void paint(Stroke<Depth>& stroke, const LineRecord& line);

  private:
    // How a dab is painted.
    enum class Way {
        kPlain,  // by itself, pixel by pixel
        kThin,   // with its neighbours, eight pixels at a time
        kThick,  // with its neighbours, rim and core
        kWhole,  // it covers the whole canvas in white, and no later dab changes a pixel
    };
    Way wayOf(const Dab& dab) const;
    bool isThick(const Dab& dab) const;
    bool coversCanvas(const Dab& dab) const;

    void paintFrom(LineWalk& walk, const Dab& first, const Stroke<Depth>& stroke);
    bool paint(const Dab& dab);
    bool areAlike(const LineWalk& walk, std::span<const Dab> dabs) const;
    bool areThick(const LineWalk& walk, std::span<const Dab> dabs) const;
    bool areThin(const LineWalk& walk, std::span<const Dab> dabs) const;
    void setFactor(double opacity);
    void fillCanvas();
    void flushAll();

    DabCanvas& canvas;
    const bool wide;  // vectors may be used
    WhatShows shows;
    OpenPixels open;
    ThinStroke<Depth> thin;
    ThickStroke<Depth> thick;
    // Of the line at hand:
    Pixel pen{};  // its alpha is that of the current dab
    typename Depth::Channel lineAlpha{};
    double factor = 1.0;        // of the line's alpha
    bool hasDirection = false;  // and so a thick stroke an axis
};

}  // namespace streakfall
