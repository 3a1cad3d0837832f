#include "shareForLines/path/LineWalk.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "lines/RandomSequence.h"
#include "lines/Trigonometry.h"
#include "shareForLines/path/OpenMiddles.h"
#include "shareForLines/path/PathLimits.h"

namespace streakfall {

LineWalk::LineWalk(StrokeForm& form, const LineRecord& record)
    : stroke(form),
      line(record),
      steady(!form.waveEnabled && form.startOpacity == 1.0 && form.endOpacity == 1.0 &&
             form.opacityCenter >= 0.0 && form.opacityCenter < 1.0),
      straight(!form.waveEnabled) {
    const double dx = line.x1 - line.x0, dy = line.y1 - line.y0;
    double length = std::sqrt(dx * dx + dy * dy);
    if (!(length > 0.0)) length = 1.0;
    done = !(length <= kMaxLineLength);
    ux = dx / length;
    uy = dy / length;
    const double thickness = std::min(stroke.thickness, kMaxThickness);
    if (stroke.inOutEnabled) {
        fIn = stroke.inLength / length;
        fOut = stroke.outLength / length;
        if (thickness > length) {
            fIn = fIn * (thickness / length);
            fOut = fOut * (thickness / length);
        }
    }
    half = thickness * 0.5;
    dt = 1.0 / length;
    rIn = stroke.startThicknessRatio * half;
    rOut = stroke.endThicknessRatio * half;
    hollowLimit = std::max(0.0, 1.0 - thickness / length);
    stroke.inShape.cursor = stroke.outShape.cursor = 0;
    px = line.x0;
    py = line.y0;
    if (stroke.waveEnabled) {
        const SineCosine normal = sineCosine(vectorAngle(dy, dx));
        sinA = normal.sine;
        cosA = normal.cosine;
        stroke.waveState = startStream(static_cast<std::uint32_t>(line.seed));
        resetWave(stroke.wave, stroke.waveState, line.axialPosition);
    }
}

LineWalk::Middles LineWalk::middles() const {
    if (hollowLimit <= 0.0 || half < 5.0) return Middles::kPainted;
    const bool full = stroke.opacityCenter >= 0.0 && stroke.opacityCenter < 1.0;
    // Solid dabs of less alpha do not make up for a hollow one.
    if (stroke.startOpacity != 1.0 || !full) return Middles::kLeft;
    if (stroke.endOpacity != 1.0) return Middles::kPaintedComing;
    return openStrips(beginsHollow()) != 0 ? Middles::kPaintedComingOrGoing : Middles::kPainted;
}

OpenStrips LineWalk::openStrips(bool fromHollow) const {
    const double turn = stroke.waveEnabled ? std::atan(steepestSlope(stroke.wave)) : 0.0;
    // The out ramp is the same curve from its end on, and solid dabs follow on the hollow ones.
    const double outPart = fOut > 0.0 ? (hollowLimit + 3.0 * dt - (1.0 - fOut)) / fOut : 0.0;
    return stripsThatMayStayOpen({.ux = ux,
                                  .uy = uy,
                                  .turn = turn,
                                  .radius = half,
                                  .curve = &stroke.inShape.points,
                                  .in = {rIn, 0.0, fIn / dt},
                                  .out = {rOut, 1.0 - outPart, outPart > 0.0 ? fOut / dt : 0.0},
                                  .beginsHollow = fromHollow});
}

double LineWalk::radiusAt(double place) {
    double r = half;
    if (fIn > place) {
        r = std::min(half, (half - rIn) * shapeValue(stroke.inShape, place / fIn) + rIn);
    }
    if (place > 1.0 - fOut) {
        const double u = (place - 1.0 + fOut) / fOut;
        r = std::min(r, (half - rOut) * shapeValue(stroke.outShape, u) + rOut);
    }
    return r;
}

// 1 at the opacity centre, falling to the start's and the end's factor. A centre at the very end
// leaves the last step without a value, and it paints nothing.
double LineWalk::opacityAt() const {
    const double centre = stroke.opacityCenter;
    if (centre > t) return stroke.startOpacity + (1.0 - stroke.startOpacity) * t / centre;
    return (stroke.endOpacity - 1.0) * (t - centre) / (1.0 - centre) + 1.0;
}

// Works out the step at t and moves t on. False when the step paints nothing.
inline bool LineWalk::step(Dab& dab) {
    if (t >= 1.0) {
        // The end point is reached exactly, whatever the sums have drifted to.
        t = 1.0;
        px = line.x1;
        py = line.y1;
        done = true;
    }
    dab.x = px;
    dab.y = py;
    dab.radius = radiusAt(t);
    dab.factor = 1.0;
    const bool paints = dab.radius > 0.0;
    if (!steady && paints) {
        dab.factor = opacityAt();
        if (stroke.waveEnabled) {
            const double w = waveOffset(stroke.wave);
            dab.x = 0.0 - sinA * w + px;
            dab.y = cosA * w + py;
        }
    }
    dab.hollow = dab.factor == 1.0 && hollowLimit > t;
    t += dt;
    px += ux;
    py += uy;
    return paints;
}

// False when all dabs from `previous` to `current` miss the canvas, however they are rounded.
bool LineWalk::comesNear() const {
    const double reach = std::max(previous.radius, current.radius) + 2.0;
    return !(std::max(previous.x, current.x) < -reach ||
             std::min(previous.x, current.x) > width + reach ||
             std::max(previous.y, current.y) < -reach ||
             std::min(previous.y, current.y) > height + reach);
}

// Makes ready the in-between dabs on the way from `previous` to `current`. Where the step is over
// a pixel by rounding alone there is just one.
void LineWalk::startBridge() {
    const double ex = current.x - previous.x, ey = current.y - previous.y;
    const double distance = std::sqrt(ex * ex + ey * ey);
    if (first || !(distance > 1.0 && distance <= kMaxBridge) || !comesNear()) return;
    bridgeX = ex / distance;
    bridgeY = ey / distance;
    bridgeR = (current.radius - previous.radius) / distance;
    bridgeF = (current.factor - previous.factor) / distance;
    bridgeAt = 1.0;
    bridgeEnd = distance;
}

// Moves `previous` to the next in-between dab; false when there is none.
bool LineWalk::bridge() {
    if (!(bridgeAt < bridgeEnd)) return false;
    bridgeAt += 1.0;
    previous.x += bridgeX;
    previous.y += bridgeY;
    previous.radius += bridgeR;
    previous.factor += bridgeF;
    previous.hollow = current.hollow;
    return true;
}

// The next dab of any line; false at the end.
bool LineWalk::nextDab(Dab& dab) {
    if (!bridge()) {
        if (bridgeEnd == 0.0) {
            do {
                if (done) return false;
            } while (!step(current));
            startBridge();
        }
        if (!bridge()) {
            bridgeEnd = 0.0;
            first = false;
            previous = current;
        }
    }
    dab = previous;
    return true;
}

// Steps of a straight line are a pixel long, but for rounding, which no branch can foresee: the
// in-between dab is always worked out, and counted where the step is longer.
std::size_t LineWalk::straightDabs() {
    std::array<Dab, kSteps> steps;
    std::size_t stepCount = 0;
    while (stepCount < kSteps && straight && !done) {
        const bool paints = step(steps[stepCount]);
        // A gap in the middle of the line takes more than one dab.
        straight = paints || first;
        if (paints && first) previous = steps[0];
        first = first && !paints;
        stepCount += paints;
    }
    std::size_t n = 0;
    for (std::size_t i = 0; i < stepCount; ++i) {
        const Dab& dab = steps[i];
        const double ex = dab.x - previous.x, ey = dab.y - previous.y;
        const double distance = std::sqrt(ex * ex + ey * ey);
        dabs[n] = {previous.x + ex / distance, previous.y + ey / distance,
                   previous.radius + (dab.radius - previous.radius) / distance,
                   steady ? 1.0 : previous.factor + (dab.factor - previous.factor) / distance,
                   dab.hollow};
        n += distance > 1.0 && distance <= kMaxBridge;
        previous = dabs[n++] = dab;
    }
    return n;
}

// Works out the next dabs; false when there are none.
bool LineWalk::fill() {
    taken = ready = 0;
    while (straight && ready == 0 && !done) ready = straightDabs();
    if (ready == 0) {
        while (ready < dabs.size() && nextDab(dabs[ready])) ++ready;
    }
    return ready > 0;
}

}  // namespace streakfall
