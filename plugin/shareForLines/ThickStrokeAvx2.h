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
//    (LargeDabShape), until its colour rests (EightPixels); from there on the largest alpha counts.
//  - Hollow dabs leave their middle open, but nearly every pixel inside one of them is painted by
//    another. The others (OpenPixels) are worked out by their merges.
//
// Owner: the painter of lines. Needs a processor with AVX2.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "shareForLines/LargeDabAvx2.h"
#include "shareForLines/LineCanvas.h"
#include "shareForLines/OpenPixels.h"
#include "shareForLines/ThickBoundsAvx2.h"
#include "shareForLines/ThickDabsAvx2.h"

namespace streakfall {

template <class Depth>
class ThickStroke {
  public:
    using Pixel = typename Depth::Pixel;

    // Before the first dab of a line. `straight`: no wave; `pixels`, which outlives the line: those
    // that its hollow dabs may leave open.
    void start(bool straight, const OpenPixels& pixels) {
        isStraight = straight;
        open = &pixels;
        count = 0;
    }

    // Takes a large dab that touches the canvas. False when it cannot go into this run: flush and
    // try again; if it is refused by an empty run, paint it by itself.
    bool add(const Dab& dab, typename Depth::Channel alpha);

    // Paints the run with the colour of the pen and empties it. There is one dab at least. `single`
    // paints the dabs of a run that cannot be painted as one.
    void flush(LineCanvas& canvas, const Pixel& pen, LargeDabAvx2<Depth>& single);

    bool empty() const { return count == 0; }

  private:
    bool goesOn(const Dab& dab) const;
    bool meetsOthers(const LineCanvas& canvas, const Pixel& pen) const;
    void paintCore(LineCanvas& canvas, const Pixel& pen) const;

    bool isStraight = true;
    const OpenPixels* open = nullptr;
    bool steep = false;    // y is the major axis
    double advance = 0.0;  // sign of the way along it; 0 before the second dab
    std::int32_t count = 0;
    bool everything = false;  // of the run at hand is looked at, the core as well
    std::int32_t rising = 0;  // 1 or -1 when alphas rise or fall along the way
    std::array<Dab, ThickDabs::kCapacity> held;
    std::array<typename Depth::Channel, ThickDabs::kCapacity> heldAlphas;
    std::array<std::int32_t, ThickDabs::kCapacity> payloads;
    std::vector<KeptPixel<Depth>> kept;
    ThickDabs dabs;
    ThickBounds bounds;
};

}  // namespace streakfall
