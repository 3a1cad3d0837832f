// The plain scalar twin of the stroke drawing: the algorithm as it is defined, dab after dab and
// pixel after pixel, with no shortcut. The product's drawing must give the same bits.
//
// It shares with the product what is no optimisation of anything: pixel forms and merge, coverage
// table, span records, ramp curves, wave, and the definition of the circle walk.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

#include "lines/LineRecord.h"
#include "lines/RandomSequence.h"
#include "lines/Trigonometry.h"
#include "reference/PlainCoverage.h"
#include "shareForLines/CirclePath.h"
#include "shareForLines/LineCanvas.h"
#include "shareForLines/MergePixel.h"
#include "shareForLines/Stroke.h"

namespace reference {

using namespace streakfall;

template <class Depth>
using PixelOf = typename Depth::Pixel;

template <class Depth>
void plotCoveredPixel(LineCanvas& canvas, int x, int y, const PixelOf<Depth>& pen, int g) {
    if (x < 0 || y < 0 || x >= canvas.width || y >= canvas.height || g < 1) return;
    mergePixel<Depth>(canvas.row<Depth>(y)[x], pen, Depth::coverAlpha(pen.alpha, g));
}

template <class Depth>
void drawSmallDab(LineCanvas& canvas, double x, double y, double r, const PixelOf<Depth>& pen) {
    int xa = truncToI32(x - r), xb = truncToI32(0.5 + x + r);
    int ya = truncToI32(y - r), yb = truncToI32(0.5 + y + r);
    if (xa >= canvas.width || xb < 0 || ya >= canvas.height || yb < 0) return;
    xa = std::max(xa, 0);
    ya = std::max(ya, 0);
    xb = std::min(xb, canvas.width - 1);
    yb = std::min(yb, canvas.height - 1);
    if (ya > yb) return;
    const double p = xa - x, q = ya - y, D = r + r, inc = 1.0 / r;
    double dRow = (p * p - r * r + q * q) / D;
    const double stepX0 = (p * 2.0 + 1.0) / D;
    double stepY = (q * 2.0 + 1.0) / D;
    for (int Y = ya; Y <= yb; ++Y) {
        double d = dRow, stepX = stepX0;
        for (int X = xa; X <= xb; ++X) {
            const int g = coverageOf(r, d);
            d += stepX;
            stepX += inc;
            if (g >= 1) plotCoveredPixel<Depth>(canvas, X, Y, pen, g);
        }
        dRow += stepY;
        stepY += inc;
    }
}

template <class Depth>
void fillSpan(LineCanvas& canvas, int xStart, int xEnd, int y, int rowDepth,
              const PixelOf<Depth>& pen) {
    if (xStart >= canvas.width || xEnd < 0 || y < 0 || y >= canvas.height) return;
    const int a = std::max(xStart, 0), b = std::min(xEnd, canvas.width - 1);
    PixelOf<Depth>* row = canvas.row<Depth>(y);
    const bool whole = !canvas.hollowDabs || b - a < 6 || rowDepth < 4;
    for (int x = a; x <= b; ++x) {
        if (whole || x - a < 3 || b - x < 3) mergePixel<Depth>(row[x], pen, pen.alpha);
    }
}

template <class Depth>
void fillSpans(LineCanvas& canvas, int xi, int yi, const PixelOf<Depth>& pen) {
    const SpanTable& spans = canvas.spans;
    for (int i = spans.rowCount - 1; i >= 0; --i) {
        const int left = spans.left[static_cast<std::size_t>(i)];
        const int right = spans.right[static_cast<std::size_t>(i)];
        if (left == SpanTable::kNoLeft || right == SpanTable::kNoRight || left > right) continue;
        const int Y = i + spans.firstRow;
        const int rowDepth = spans.rowCount / 2 - 5 - std::abs(Y);
        fillSpan<Depth>(canvas, left + xi, right + xi, Y + yi, rowDepth, pen);
    }
}

template <class Depth>
void drawLargeDab(LineCanvas& canvas, double x, double y, double r, const PixelOf<Depth>& pen) {
    const DabCentre c = quantiseCentre(x, y);
    resetSpans(canvas.spans, r, c.cx, c.cy);
    walkCircle(c, r, [&](int X, int Y, const Arc& arc) {
        const double d1 = signedDistance(c, r, X, Y);
        const int side = d1 < 0 ? 1 : -1;
        const int pairX = X + side * arc.outwardX, pairY = Y + side * arc.outwardY;
        const double d2 = signedDistance(c, r, pairX, pairY);
        plotCoveredPixel<Depth>(canvas, c.xi + X, c.yi + Y, pen, coverageOf(r, d1));
        plotCoveredPixel<Depth>(canvas, c.xi + pairX, c.yi + pairY, pen, coverageOf(r, d2));
        recordSpan(canvas.spans, X, Y);
        recordSpan(canvas.spans, pairX, pairY);
    });
    fillSpans<Depth>(canvas, c.xi, c.yi, pen);
}

template <class Depth>
void paintDab(const Stroke<Depth>& stroke, LineCanvas& canvas, PixelOf<Depth>& pen, double x,
              double y, double r, double f) {
    pen.alpha = Depth::scaleAlpha(stroke.pen.alpha, f);
    if (!(r > 0.0) || canvas.world == nullptr) return;
    // Written so that a place that is no number is skipped too.
    const bool touches =
        x - r <= canvas.width && y - r <= canvas.height && x + r >= 0 && y + r >= 0;
    if (!touches) return;
    if (r < kOutlineRadius) {
        drawSmallDab<Depth>(canvas, x, y, r, pen);
    } else {
        drawLargeDab<Depth>(canvas, x, y, r, pen);
    }
}

template <class Depth>
void traceLine(Stroke<Depth>& stroke, LineCanvas& canvas, const LineRecord& line) {
    if (stroke.thickness == 0.0 || stroke.pen.alpha == 0) return;
    const double dx = line.x1 - line.x0, dy = line.y1 - line.y0;
    double L = std::sqrt(dx * dx + dy * dy);
    if (!(L > 0.0)) L = 1.0;
    if (!(L <= kLongestLine)) return;
    const double angle = vectorAngle(dy, dx);
    const double ux = dx / L, uy = dy / L;
    const double thickness = std::min(stroke.thickness, kThickestLine);
    double fIn = 0.0, fOut = 0.0;
    if (stroke.inOutEnabled) {
        fIn = stroke.inLength / L;
        fOut = stroke.outLength / L;
        if (thickness > L) {
            fIn = fIn * (thickness / L);
            fOut = fOut * (thickness / L);
        }
    }
    const double half = thickness * 0.5, dt = 1.0 / L;
    const double rIn = stroke.startThicknessRatio * half;
    const double rOut = stroke.endThicknessRatio * half;
    const double hollowLimit = std::max(0.0, 1.0 - thickness / L);
    canvas.hollowDabs = false;
    stroke.inShape.cursor = stroke.outShape.cursor = 0;
    PixelOf<Depth> pen = stroke.pen;
    if (stroke.waveEnabled) {
        stroke.waveState = startStream(static_cast<std::uint32_t>(line.seed));
        resetWave(stroke.wave, stroke.waveState, line.axialPosition);
    }
    const auto [sinA, cosA] = sineCosine(angle);
    double t = 0.0, px = line.x0, py = line.y0;
    bool first = true, last = false;
    double prevX = 0.0, prevY = 0.0, prevR = 0.0, prevA = 0.0;
    while (!last) {
        if (t >= 1.0) {
            t = 1.0;
            px = line.x1;
            py = line.y1;
            last = true;
        }
        double r = half;
        if (fIn > t) {
            r = std::min(half, (half - rIn) * shapeValue(stroke.inShape, t / fIn) + rIn);
        }
        if (t > 1.0 - fOut) {
            const double u = (t - 1.0 + fOut) / fOut;
            r = std::min(r, (half - rOut) * shapeValue(stroke.outShape, u) + rOut);
        }
        if (r > 0.0) {
            double a;
            if (stroke.opacityCenter > t) {
                a = stroke.startOpacity + (1.0 - stroke.startOpacity) * t / stroke.opacityCenter;
            } else {
                a = (stroke.endOpacity - 1.0) * (t - stroke.opacityCenter) /
                        (1.0 - stroke.opacityCenter) +
                    1.0;
            }
            canvas.hollowDabs = a == 1.0 && hollowLimit > t;
            double qx = px, qy = py;
            if (stroke.waveEnabled) {
                const double w = waveOffset(stroke.wave);
                qx = 0.0 - sinA * w + px;
                qy = cosA * w + py;
            }
            const double ex = qx - prevX, ey = qy - prevY;
            const double d2 = ex * ex + ey * ey;
            if (!(d2 <= 1.0 || first)) {
                const double dist = std::sqrt(d2);
                const double dr = (r - prevR) / dist, da = (a - prevA) / dist;
                const double vx = ex / dist, vy = ey / dist;
                const double bound = dist <= kWidestGap ? dist : 0.0;
                for (double s = 1.0; s < bound; s += 1.0) {
                    prevX += vx;
                    prevY += vy;
                    prevR += dr;
                    prevA += da;
                    paintDab(stroke, canvas, pen, prevX, prevY, prevR, prevA);
                }
            }
            paintDab(stroke, canvas, pen, qx, qy, r, a);
            first = false;
            prevX = qx;
            prevY = qy;
            prevR = r;
            prevA = a;
        }
        t += dt;
        px += ux;
        py += uy;
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
