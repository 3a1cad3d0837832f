// The plain scalar twin of the stroke drawing: the algorithm as it is defined, dab after dab and
// pixel after pixel, with no shortcut. The product's drawing must give the same bits.
//
// Nothing that it judges is shared with it: limits, tables and arithmetic are its own. It takes
// from the product the records that say what to draw, the points of the ramp curves, and what other
// tests judge: random numbers, sine and cosine.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>
#include <vector>

#include "lines/LineRecord.h"
#include "lines/Trigonometry.h"
#include "reference/PlainDab.h"
#include "reference/PlainWave.h"
#include "shareForLines/path/Stroke.h"
#include "shareForLines/trace/LineCanvas.h"

namespace reference {

using streakfall::LineRecord;
using streakfall::Stroke;
using streakfall::StrokeForm;

// A longer line is not drawn, a thicker one is drawn this thick, and a wider gap that a wave tears
// between two steps stays open. Pixels.
inline constexpr double kLongestLine = 131072.0;
inline constexpr double kThickest = 4096.0;
inline constexpr double kWidestGap = 2048.0;

// A place of the pen.
struct Point {
    double x = 0, y = 0, radius = 0, factor = 0;
};

// What of a line does not change along it.
struct PlainLine {
    PlainLine(const StrokeForm& form, const LineRecord& line, double length) {
        const double thickness = std::min(form.thickness, kThickest);
        half = thickness * 0.5;
        rIn = form.startThicknessRatio * half;
        rOut = form.endThicknessRatio * half;
        solidFrom = std::max(0.0, 1.0 - thickness / length);
        const auto [sine, cosine] =
            streakfall::sineCosine(streakfall::vectorAngle(line.y1 - line.y0, line.x1 - line.x0));
        sinA = sine;
        cosA = cosine;
        if (!form.inOutEnabled) return;
        in = form.inLength / length;
        out = form.outLength / length;
        if (thickness > length) {
            in = in * (thickness / length);
            out = out * (thickness / length);
        }
    }

    double radiusAt(const StrokeForm& form, double t) const {
        double r = half;
        if (in > t) {
            r = std::min(half, (half - rIn) * curveAt(form.inShape.points, t / in) + rIn);
        }
        if (t > 1.0 - out) {
            const double u = (t - 1.0 + out) / out;
            r = std::min(r, (half - rOut) * curveAt(form.outShape.points, u) + rOut);
        }
        return r;
    }

    double half, rIn, rOut;
    double in = 0.0, out = 0.0;  // ramps as parts of the line
    double solidFrom;            // no dab behind it is hollow
    double sinA, cosA;
};

inline double factorAt(const StrokeForm& form, double t) {
    const double centre = form.opacityCenter;
    if (centre > t) return form.startOpacity + (1.0 - form.startOpacity) * t / centre;
    return (form.endOpacity - 1.0) * (t - centre) / (1.0 - centre) + 1.0;
}

template <class Depth>
void paintDab(DabPainter<typename Depth::Pixel>& painter, const LineCanvas& canvas,
              typename Depth::Pixel pen, const Point& p, bool hollow) {
    pen.alpha = ChannelsOf<typename Depth::Pixel>::scaled(pen.alpha, p.factor);
    // Written so that a place that is no number is skipped too.
    const bool touches = p.x - p.radius <= canvas.width && p.y - p.radius <= canvas.height &&
                         p.x + p.radius >= 0 && p.y + p.radius >= 0;
    if (p.radius > 0.0 && touches) painter.paint(pen, p.x, p.y, p.radius, hollow);
}

template <class Depth>
void traceLine(const Stroke<Depth>& stroke, const LineCanvas& canvas, const LineRecord& line) {
    if (!(stroke.thickness > 0.0) || stroke.pen.alpha == 0 || canvas.world == nullptr) return;
    const double dx = line.x1 - line.x0, dy = line.y1 - line.y0;
    double length = std::sqrt(dx * dx + dy * dy);
    if (!(length > 0.0)) length = 1.0;
    if (!(length <= kLongestLine)) return;
    const PlainLine plain(stroke, line, length);
    std::optional<Wave> wave;
    if (stroke.waveEnabled) wave.emplace(stroke.wave, line.seed, line.axialPosition);
    DabPainter<typename Depth::Pixel> painter(canvas);
    const auto paint = [&](const Point& p, bool hollow) {
        paintDab<Depth>(painter, canvas, stroke.pen, p, hollow);
    };
    double t = 0.0, px = line.x0, py = line.y0;
    Point previous;
    bool first = true;
    for (bool last = false; !last; t += 1.0 / length, px += dx / length, py += dy / length) {
        if (t >= 1.0) {
            t = 1.0;
            px = line.x1;
            py = line.y1;
            last = true;
        }
        Point p{px, py, plain.radiusAt(stroke, t), factorAt(stroke, t)};
        if (!(p.radius > 0.0)) continue;
        const bool hollow = p.factor == 1.0 && plain.solidFrom > t;
        if (wave) {
            const double w = wave->next();
            p.x = 0.0 - plain.sinA * w + px;
            p.y = plain.cosA * w + py;
        }
        const double ex = p.x - previous.x, ey = p.y - previous.y, d2 = ex * ex + ey * ey;
        const double gap = std::sqrt(d2);
        if (!first && d2 > 1.0 && gap <= kWidestGap) {
            const double dr = (p.radius - previous.radius) / gap;
            const double df = (p.factor - previous.factor) / gap;
            for (double s = 1.0; s < gap; s += 1.0) {
                previous.x += ex / gap;
                previous.y += ey / gap;
                previous.radius += dr;
                previous.factor += df;
                paint(previous, hollow);
            }
        }
        paint(p, hollow);
        first = false;
        previous = p;
    }
}

// The lines of a frame, one after the other. penOf(i): the pen of line i.
template <class Depth, class PenOf>
void drawLineList(Stroke<Depth>& stroke, LineCanvas& canvas, const std::vector<LineRecord>& lines,
                  PenOf penOf) {
    for (std::size_t i = 0; i < lines.size(); ++i) {
        stroke.pen = penOf(i);
        stroke.thickness = lines[i].thickness;
        reference::traceLine(stroke, canvas, lines[i]);
    }
}

}  // namespace reference
