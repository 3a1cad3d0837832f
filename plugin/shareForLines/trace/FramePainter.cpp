#include "shareForLines/trace/FramePainter.h"

#include <algorithm>
#include <cmath>

#include "shareForLines/fast/OrderOfPaint.h"
#include "shareForLines/plain/DabPainter.h"
#include "shareForLines/simd/InstructionSet.h"

namespace streakfall {
namespace {

constexpr double kEdge = 2.0;     // pixels inside the circle from where on a dab is solid
constexpr double kWorthIt = 0.5;  // parts of the canvas that lines must cover together to be hidden

// Walks on to the first dab that touches the canvas.
bool reaches(LineWalk& walk, const DabCanvas& canvas, Dab& dab) {
    walk.keepTo(canvas.width, canvas.height);
    while (walk.next(dab)) {
        if (touchesCanvas(canvas, dab)) return true;
    }
    return false;
}

}  // namespace

template <class Depth>
FramePainter<Depth>::FramePainter(DabCanvas& lineCanvas)
    : canvas(lineCanvas),
      wide(instructionSet() >= InstructionSet::kAvx2),
      thin(lineCanvas, shows),
      thick(lineCanvas, shows, open) {}

template <class Depth>
typename FramePainter<Depth>::Way FramePainter<Depth>::wayOf(const Dab& dab) const {
    if (pen.alpha == Depth::kWhite && isPlain<Depth>(pen, pen) && !dab.hollow &&
        coversCanvas(dab)) {
        return Way::kWhole;
    }
    if (!wide) return Way::kPlain;
    if (dab.radius < kLargeRadius) return Way::kThin;
    return isThick(dab) ? Way::kThick : Way::kPlain;
}

template <class Depth>
bool FramePainter<Depth>::isThick(const Dab& dab) const {
    // A pen that holds a NaN equals no colour, its own neither.
    return hasDirection && isPlain<Depth>(pen, pen) && insideGivesMost<Depth>(pen) &&
           thick.takes(dab);
}

// Inside the dab by more than its edge and the quantised centre may take.
template <class Depth>
bool FramePainter<Depth>::coversCanvas(const Dab& dab) const {
    const double dx = std::max(dab.x, canvas.width - 1 - dab.x);
    const double dy = std::max(dab.y, canvas.height - 1 - dab.y);
    const double inside = dab.radius - kEdge;
    return inside > 0.0 && dx * dx + dy * dy < inside * inside;
}

template <class Depth>
void FramePainter<Depth>::lookAhead(Stroke<Depth>& stroke, std::span<const LineRecord> lines,
                                    typename Depth::Channel alpha) {
    if (alpha != Depth::kWhite || !wide) return;
    double area = 0.0;
    for (const LineRecord& line : lines) {
        const double length = std::hypot(line.x1 - line.x0, line.y1 - line.y0);
        const double ramps = stroke.inOutEnabled ? stroke.inLength + stroke.outLength : 0.0;
        const double full = std::max(length - 0.5 * ramps, 0.3 * length);
        area += std::max(line.thickness - 3.0, 0.0) * full;
    }
    if (!(area > kWorthIt * canvas.width * canvas.height)) return;
    shows.start(canvas.width, canvas.height);
    for (const LineRecord& line : lines) {
        stroke.thickness = line.thickness;
        shows.add(stroke, line);
    }
}

template <class Depth>
void FramePainter<Depth>::paint(Stroke<Depth>& stroke, const LineRecord& line) {
    if (shows.hidesLine(stroke, line)) return;
    Dab dab;
    LineWalk walk(stroke, line);
    if (!reaches(walk, canvas, dab)) return;
    open.clear();
    if (!wide || walk.middles() == LineWalk::Middles::kPainted) {
        paintFrom(walk, dab, stroke);
        return;
    }
    open.find(stroke, line, shows, canvas.width, canvas.height);
    LineWalk again(stroke, line);
    if (reaches(again, canvas, dab)) paintFrom(again, dab, stroke);
}

// The rest of the walk, from its first dab on that touches the canvas.
template <class Depth>
void FramePainter<Depth>::paintFrom(LineWalk& walk, const Dab& first, const Stroke<Depth>& stroke) {
    pen = stroke.pen;
    lineAlpha = pen.alpha;
    factor = 1.0;
    hasDirection = walk.hasDirection();
    thick.start(!stroke.waveEnabled);
    if (!paint(first)) return;
    for (auto dabs = walk.next(); !dabs.empty(); dabs = walk.next()) {
        if (areThin(walk, dabs)) {
            thin.add(pen, dabs);
            continue;
        }
        if (areThick(walk, dabs)) {
            thin.flush(pen);
            for (const Dab& dab : dabs) thick.add(dab, pen);
            continue;
        }
        for (const Dab& dab : dabs) {
            if (!paint(dab)) return;
        }
    }
    flushAll();
}

// True when all of them touch the canvas and have the line's own alpha for sure.
template <class Depth>
bool FramePainter<Depth>::areAlike(const LineWalk& walk, std::span<const Dab> dabs) const {
    const auto isOn = [&](const Dab& dab) {
        return dab.x >= 0.0 && dab.y >= 0.0 && dab.x <= canvas.width - 1 &&
               dab.y <= canvas.height - 1;
    };
    // Between two centres on the canvas there are no others.
    return wide && walk.isSteady() && isOn(dabs.front()) && isOn(dabs.back());
}

// Way::kThin for all of them, without asking for each.
template <class Depth>
bool FramePainter<Depth>::areThin(const LineWalk& walk, std::span<const Dab> dabs) const {
    return walk.fullRadius() < kLargeRadius && areAlike(walk, dabs);
}

// Likewise Way::kThick. Radii rise up to some place and fall from there, so that none between two
// is below both; and a dab that covers the canvas is wider than half of it.
template <class Depth>
bool FramePainter<Depth>::areThick(const LineWalk& walk, std::span<const Dab> dabs) const {
    Dab widest = dabs.front();
    widest.radius = walk.fullRadius();
    return 2.0 * widest.radius < std::max(canvas.width, canvas.height) &&
           std::min(dabs.front().radius, dabs.back().radius) >= kLargeRadius &&
           areAlike(walk, dabs) && isThick(widest);
}

// False when no later dab changes a pixel.
template <class Depth>
bool FramePainter<Depth>::paint(const Dab& dab) {
    if (!touchesCanvas(canvas, dab)) return true;
    setFactor(dab.factor);
    if (pen.alpha == 0) return true;
    switch (wayOf(dab)) {
        case Way::kPlain:
            flushAll();
            paintDab<Depth>(canvas, pen, dab);
            break;
        case Way::kThin:
            thick.flush(pen);
            thin.add(pen, dab);
            break;
        case Way::kThick:
            thin.flush(pen);
            thick.add(dab, pen);
            break;
        case Way::kWhole:
            fillCanvas();
            return false;
    }
    return true;
}

template <class Depth>
void FramePainter<Depth>::setFactor(double opacity) {
    if (opacity == factor) return;
    const auto alpha = Depth::scaleAlpha(lineAlpha, opacity);
    if (alpha != pen.alpha) thin.flush(pen);
    pen.alpha = alpha;
    factor = opacity;
}

// White over whatever there was. Dabs held back are not missed.
template <class Depth>
void FramePainter<Depth>::fillCanvas() {
    thin.drop();
    thick.drop();
    for (std::int32_t y = 0; y < canvas.height; ++y) {
        std::fill_n(canvas.row<Depth>(y), canvas.width, pen);
    }
}

template <class Depth>
void FramePainter<Depth>::flushAll() {
    thin.flush(pen);
    thick.flush(pen);
}

template class FramePainter<Depth8>;
template class FramePainter<Depth16>;
template class FramePainter<DepthFloat>;

}  // namespace streakfall
