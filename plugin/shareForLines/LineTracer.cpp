#include "shareForLines/LineTracer.h"

#include <algorithm>

#include "shareForLines/DabPainter.h"
#include "shareForLines/InstructionSet.h"
#include "shareForLines/LineWalk.h"
#include "shareForLines/PenPixels.h"
#include "shareForLines/SmallDabAvx2.h"
#include "shareForLines/ThickStrokeAvx2.h"

namespace streakfall {
namespace {

constexpr double kEdge = 2.0;  // pixels inside the circle from where on a dab is solid

// Paints the dabs of one line in walk order, each by the fastest way that leaves the same bits.
template <class Depth>
class LinePainter {
  public:
    LinePainter(LineCanvas& lineCanvas, const Stroke<Depth>& stroke, const LineWalk& walk,
                const OpenPixels& open)
        : canvas(lineCanvas),
          pen(stroke.pen),
          strokeAlpha(stroke.pen.alpha),
          wide(instructionSet() >= InstructionSet::kAvx2),
          thick(wide && walk.hasDirection()) {
        run.start(!stroke.waveEnabled, open);
    }

    // The dab touches the canvas. False when no later dab of the line can change a pixel.
    bool paint(const Dab& dab) {
        setFactor(dab.factor);
        if (pen.alpha == 0) return true;
        if (pen.alpha == Depth::kWhite && !dab.hollow && coversCanvas(dab)) {
            fillCanvas();
            return false;
        }
        paintOne(dab);
        return true;
    }

    void flush() {
        small.flush(canvas, pen);
        flushLarge();
    }

  private:
    void setFactor(double f) {
        if (f == factor) return;
        const auto alpha = Depth::scaleAlpha(strokeAlpha, f);
        if (alpha != pen.alpha) {
            small.flush(canvas, pen);
        }
        pen.alpha = alpha;
        factor = f;
    }

    // Inside the dab by more than its edge and the quantised centre may take.
    bool coversCanvas(const Dab& dab) const {
        const double dx = std::max(dab.x, canvas.width - 1 - dab.x);
        const double dy = std::max(dab.y, canvas.height - 1 - dab.y);
        const double inside = dab.radius - kEdge;
        return inside > 0.0 && dx * dx + dy * dy < inside * inside;
    }

    // White over whatever there was. Dabs held back are not missed.
    void fillCanvas() {
        for (std::int32_t y = 0; y < canvas.height; ++y) {
            std::fill_n(canvas.row<Depth>(y), canvas.width, pen);
        }
    }

    void paintOne(const Dab& dab) {
        if (dab.radius >= kLargeRadius) {
            small.flush(canvas, pen);
            paintLarge(dab);
            return;
        }
        flushLarge();
        if (wide) {
            small.paint(canvas, pen, dab);
        } else {
            paintDab<Depth>(canvas, pen, dab);
        }
    }

    void paintLarge(const Dab& dab) {
        if (thick && pen.alpha > 0 && insideGivesMost<Depth>(pen)) {
            if (hold(run, dab, [&] { flushRun(); })) return;
        }
        flushLarge();
        if (wide) {
            single.paint(canvas, pen, dab);
        } else {
            paintDab<Depth>(canvas, pen, dab);
        }
    }

    // Keeps the dab back, to be painted with its neighbours. False when it must go by itself.
    template <class Dabs, class Flush>
    bool hold(Dabs& dabs, const Dab& dab, Flush flushThem) {
        if (dabs.add(dab, pen.alpha)) return true;
        if (dabs.empty()) return false;
        flushThem();
        return dabs.add(dab, pen.alpha);
    }

    void flushRun() {
        if (!run.empty()) run.flush(canvas, pen, single);
    }
    void flushLarge() { flushRun(); }

    LineCanvas& canvas;
    typename Depth::Pixel pen;  // its alpha is that of the current dab
    typename Depth::Channel strokeAlpha;
    double factor = 1.0;  // of the pen's alpha
    bool wide;            // vectors may be used
    bool thick;           // and runs of large dabs
    SmallDabAvx2<Depth> small;
    LargeDabAvx2<Depth> single;
    ThickStroke<Depth> run;
};

// The rest of the walk, from `dab` on, its first one that touches the canvas. Apart from traceLine,
// as the painter is large, and most lines of a frame may lie off the canvas.
template <class Depth>
__attribute__((noinline)) void paintRest(LineWalk& walk, Dab& dab, const Stroke<Depth>& stroke,
                                         LineCanvas& canvas, const OpenPixels& open) {
    LinePainter<Depth> painter(canvas, stroke, walk, open);
    do {
        if (touchesCanvas(canvas, dab) && !painter.paint(dab)) return;
    } while (walk.next(dab));
    painter.flush();
}

// Walks on to the first dab that touches the canvas.
bool reaches(LineWalk& walk, const LineCanvas& canvas, Dab& dab) {
    while (walk.next(dab)) {
        if (touchesCanvas(canvas, dab)) return true;
    }
    return false;
}

}  // namespace

template <class Depth>
void traceLine(Stroke<Depth>& stroke, LineCanvas& canvas, const LineRecord& line) {
    if (!(stroke.thickness > 0.0) || stroke.pen.alpha == 0 || canvas.world == nullptr) return;
    if (canvas.shows.hidesLine(stroke, line)) return;
    static const OpenPixels kNoPixels;
    Dab dab;
    LineWalk walk(stroke, line);
    walk.keepTo(canvas.width, canvas.height);
    if (!reaches(walk, canvas, dab)) return;
    if (instructionSet() < InstructionSet::kAvx2 || walk.middles() == LineWalk::Middles::kPainted) {
        paintRest(walk, dab, stroke, canvas, kNoPixels);
        return;
    }
    canvas.open.find(stroke, line, canvas.width, canvas.height);
    LineWalk again(stroke, line);
    again.keepTo(canvas.width, canvas.height);
    if (reaches(again, canvas, dab)) paintRest(again, dab, stroke, canvas, canvas.open);
}

template void traceLine<Depth8>(Stroke<Depth8>&, LineCanvas&, const LineRecord&);
template void traceLine<Depth16>(Stroke<Depth16>&, LineCanvas&, const LineRecord&);
template void traceLine<DepthFloat>(Stroke<DepthFloat>&, LineCanvas&, const LineRecord&);

}  // namespace streakfall
