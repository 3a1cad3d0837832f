#include "shareForLines/LineWalk.h"

#include <algorithm>
#include <cmath>

#include "lines/RandomSequence.h"
#include "lines/Trigonometry.h"
#include "shareForLines/LineTracer.h"

namespace streakfall {
namespace {

// The part of a line, 0 to 1, along which the opacity factor is exactly 1.
double partAtFullOpacity(const StrokeForm& stroke) {
    const double from = stroke.startOpacity == 1.0 ? 0.0 : stroke.opacityCenter;
    const double to = stroke.endOpacity == 1.0 ? 1.0 : stroke.opacityCenter;
    return std::min(to, 1.0) - std::max(from, 0.0);
}

// The hollow dabs' first and last step, each up to a pixel inside that part.
constexpr double kPartialSteps = 2.0;

}  // namespace

LineWalk::LineWalk(StrokeForm& form, const LineRecord& record) : stroke(form), line(record) {
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
    closesHollow = partAtFullOpacity(stroke) * length > thickness + kPartialSteps;
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

double LineWalk::radiusAt() {
    double r = half;
    if (fIn > t) {
        r = std::min(half, (half - rIn) * shapeValue(stroke.inShape, t / fIn) + rIn);
    }
    if (t > 1.0 - fOut) {
        const double u = (t - 1.0 + fOut) / fOut;
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

// Works out the step at t as `current` and moves t on. False when the step paints nothing.
bool LineWalk::step() {
    if (t >= 1.0) {
        // The end point is reached exactly, whatever the sums have drifted to.
        t = 1.0;
        px = line.x1;
        py = line.y1;
        last = true;
    }
    const double r = radiusAt();
    const bool paints = r > 0.0;
    if (paints) {
        current.radius = r;
        current.factor = opacityAt();
        current.hollow = current.factor == 1.0 && hollowLimit > t;
        current.x = px;
        current.y = py;
        if (stroke.waveEnabled) {
            const double w = waveOffset(stroke.wave);
            current.x = 0.0 - sinA * w + px;
            current.y = cosA * w + py;
        }
    }
    t += dt;
    px += ux;
    py += uy;
    done = last;
    return paints;
}

// The next in-between dab on the way from `previous` to `current`; false when there is none.
bool LineWalk::bridge(Dab& dab) {
    if (bridgeAt < bridgeEnd) {
        bridgeAt += 1.0;
        previous.x += bridgeX;
        previous.y += bridgeY;
        previous.radius += bridgeR;
        previous.factor += bridgeF;
        previous.hollow = current.hollow;
        dab = previous;
        return true;
    }
    return false;
}

bool LineWalk::next(Dab& dab) {
    if (bridge(dab)) return true;
    if (bridgeEnd > 0.0) {
        bridgeEnd = 0.0;
        dab = previous = current;
        return true;
    }
    do {
        if (done) return false;
    } while (!step());
    const double ex = current.x - previous.x, ey = current.y - previous.y;
    const double d2 = ex * ex + ey * ey;
    if (!(d2 <= 1.0 || first)) {
        const double distance = std::sqrt(d2);
        // Mostly the step is over a pixel by rounding alone, and no dab fits between.
        if (distance > 1.0 && distance <= kMaxBridge) {
            bridgeX = ex / distance;
            bridgeY = ey / distance;
            bridgeR = (current.radius - previous.radius) / distance;
            bridgeF = (current.factor - previous.factor) / distance;
            bridgeAt = 1.0;
            bridgeEnd = distance;
            bridge(dab);
            return true;
        }
    }
    first = false;
    dab = previous = current;
    return true;
}

}  // namespace streakfall
