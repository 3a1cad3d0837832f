// LineWalk: the way of the pen along one line, as a row of dabs, one a pixel of the drawn path.
//
// All arithmetic is summed step by step from the line's start, in the order written: a dab's
// place depends on every rounding before it. Where a step is longer than a pixel, by the wave or
// by rounding, in-between dabs bridge the gap. Reads the stroke; moves its shape cursors and its
// wave. Lives for one line.
#pragma once

#include <array>
#include <cmath>
#include <cstddef>
#include <span>

#include "lines/LineRecord.h"
#include "shareForLines/path/OpenMiddles.h"
#include "shareForLines/path/Stroke.h"

namespace streakfall {

// One disc of the pen.
struct Dab {
    double x, y;    // centre, buffer pixels; pixel (X, Y) sits at integer coordinates
    double radius;  // pixels, above 0 for a step of the walk
    double factor;  // opacity along the line, 1 is the pen's own alpha
    bool hollow;    // a large dab may leave its middle to the dabs that follow
};

class LineWalk {
  public:
    // stroke.thickness above 0. A line too long to be drawn gives no dab.
    LineWalk(StrokeForm& stroke, const LineRecord& line);

    // Leaves out the in-between dabs of steps that do not come near the canvas.
    void keepTo(std::int32_t canvasWidth, std::int32_t canvasHeight) {
        width = canvasWidth;
        height = canvasHeight;
    }

    // The next dab in walk order; false at the end.
    bool next(Dab& dab) {
        if (taken == ready && !fill()) return false;
        dab = dabs[taken++];
        return true;
    }

    // The next dabs, as many as are worked out at a time; none at the end. They stay until more are
    // asked for.
    std::span<const Dab> next() {
        if (taken == ready && !fill()) return {};
        const std::span<const Dab> rest(dabs.data() + taken, ready - taken);
        taken = ready;
        return rest;
    }

    // True when the dabs lie on a straight line and all factors are 1.
    bool isSteady() const { return steady; }
    double fullRadius() const { return half; }
    // Between the points, pixels; 1 where they are one.
    double length() const { return 1.0 / dt; }
    // The radius at a place along the line, 0 to 1. Within a walk places may not fall.
    double radiusAt(double place);

    // The place along the line, 0 to 1, from which on every dab is solid.
    double solidFrom() const { return hollowLimit; }

    double directionX() const { return ux; }  // unit vector, (0, 0) for a line of no length
    double directionY() const { return uy; }
    bool hasDirection() const { return ux != 0.0 || uy != 0.0; }

    // What becomes of the pixels inside the line's hollow dabs that these leave open.
    enum class Middles {
        kPainted,               // at the pen's alpha, by another dab
        kPaintedComingOrGoing,  // likewise, but those that come in and go out past a fast end
        kPaintedComing,         // likewise, but those that come in past a fast end
        kLeft,                  // none is painted for sure
    };
    Middles middles() const;
    // Where they are kPaintedComingOrGoing, the strips of the line that may have open ones, but for
    // what the first dab has inside, when that is hollow.
    OpenStrips openStrips() const { return openStrips(false); }
    bool beginsHollow() const { return hollowLimit > 0.0 && (fIn > 0.0 ? rIn : half) >= 5.0; }

  private:
    static constexpr std::size_t kSteps = 32;  // at a time

    OpenStrips openStrips(bool fromHollow) const;
    bool fill();
    bool step(Dab& dab);
    std::size_t straightDabs();
    bool nextDab(Dab& dab);
    bool comesNear() const;
    void startBridge();
    bool bridge();
    double opacityAt() const;

    StrokeForm& stroke;
    const LineRecord& line;
    double ux, uy;  // advance of a step
    double sinA = 0, cosA = 1;
    double half;                   // full radius
    double rIn, rOut;              // radius at the thin ends of the ramps
    double fIn = 0, fOut = 0;      // ramps as parts of the line
    double dt;                     // advance of t in a step
    double hollowLimit;            // t from which on every dab is solid
    double t = 0, px = 0, py = 0;  // place along the line, 0 to 1, and its point
    bool done = false;
    bool first = true;
    const bool steady;
    bool straight;   // no wave, and all steps so far but the first ones painted
    Dab previous{};  // last painted step, moved along by the bridge
    Dab current{};   // the step being bridged to
    double bridgeX = 0, bridgeY = 0, bridgeR = 0, bridgeF = 0;  // advance of an in-between dab
    double width = HUGE_VAL, height = HUGE_VAL;                 // of the canvas, pixels
    double bridgeAt = 1, bridgeEnd = 0;                         // no bridge while the end is 0
    std::size_t taken = 0, ready = 0;
    std::array<Dab, 2 * kSteps> dabs;  // in walk order, `ready` of them
};

}  // namespace streakfall
