#include "shareForLines/LineWalk.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "lines/RandomSequence.h"
#include "lines/Trigonometry.h"
#include "shareForLines/LineTracer.h"

namespace streakfall {

LineWalk::LineWalk(StrokeForm& form, const LineRecord& record)
    : stroke(form),
      line(record),
      straight(!form.waveEnabled && form.startOpacity == 1.0 && form.endOpacity == 1.0 &&
               form.opacityCenter >= 0.0 && form.opacityCenter < 1.0) {
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

namespace {

constexpr double kShift = 1.0 / 16.0;  // between two quantised centres, beyond the step, pixels
constexpr double kFarthestEnd = 2.95;  // below kHollowRim
constexpr double kLongestStep = 1.01;  // of dabs on a straight line, pixels

// How far the end of a hollow row may move along it in a step (x, y), while the radius changes from
// `narrow` to r. A hollow row lies at most r - 3 from the middle, and its end on the circle of the
// row beyond.
double endMoves(double r, double narrow, double x, double y) {
    const double offset = r - 2.0, farther = offset + y + kShift;
    const double half2 = r * r - offset * offset, before2 = narrow * narrow - farther * farther;
    return x + kShift + std::sqrt(half2) - std::sqrt(std::max(before2, 0.0));
}

// The same for the direction that moves it farthest.
double endMovesMost(double r, double narrow) {
    double most = 0.0;
    for (int degrees = 0; degrees <= 90; degrees += 5) {
        const double a = degrees * (3.14159265358979 / 180.0);
        most = std::max(most, endMoves(r, narrow, kLongestStep * std::cos(a) + 0.05,
                                       kLongestStep * std::sin(a) + 0.05));
    }
    return most;
}

}  // namespace

bool LineWalk::middlesMayStayOpen() const {
    if (hollowLimit <= 0.0 || half < 5.0) return false;
    if (!(stroke.startOpacity == 1.0 && stroke.endOpacity == 1.0 && stroke.opacityCenter >= 0.0 &&
          stroke.opacityCenter < 1.0)) {
        return true;
    }
    const double x = kLongestStep * std::fabs(ux), y = kLongestStep * std::fabs(uy);
    const auto isFast = [&](double r, double growth) {
        const double moves =
            stroke.waveEnabled ? endMovesMost(r, r - growth) : endMoves(r, r - growth, x, y);
        return moves > kFarthestEnd;
    };
    // A narrower dab of the same growth has slower ends.
    if (isFast(half, 0.0)) return true;
    const bool shrinks = fOut > 1.0 - hollowLimit && rOut < half;
    const bool grows = fIn > 0.0 && rIn < half;
    if (!shrinks || !grows) return false;
    const auto isFastOn = [&](double thin, double part) {
        const std::vector<ShapePoint>& curve = stroke.inShape.points;
        for (std::size_t i = 1; i < curve.size(); ++i) {
            const double slope =
                (curve[i].value - curve[i - 1].value) / (curve[i].position - curve[i - 1].position);
            const double r = (half - thin) * curve[i].value + thin;
            const double growth = kLongestStep * slope * (half - thin) * dt / part;
            if (r >= 5.0 && isFast(r, growth)) return true;
        }
        return false;
    };
    return isFastOn(rIn, fIn) && isFastOn(rOut, fOut);
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
    if (!straight && paints) {
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
                   previous.radius + (dab.radius - previous.radius) / distance, 1.0, dab.hollow};
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
