// The plain twin's dabs: one disc, pixel after pixel. A dab of a radius below 5 visits its box; a
// larger one walks round its outline, two pixels a step, and fills what lies inside row by row.
#pragma once

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <vector>

#include "lines/Convert.h"
#include "reference/PlainPixel.h"
#include "shareForLines/trace/LineCanvas.h"

namespace reference {

using streakfall::LineCanvas;
using streakfall::truncToI32;

// Coverage by radius 0 to 11, and by signed distance in sixteenths of a pixel, from -1 on.
inline constexpr int kCoverage[12][32] = {
    {},
    {255, 254, 252, 248, 243, 237, 230, 221, 211, 200, 189, 176, 163, 150, 135, 121,
     107, 93,  80,  67,  56,  46,  36,  28,  21,  15,  11,  7,   4,   2,   1,   0},
    {255, 255, 253, 251, 248, 243, 237, 230, 221, 211, 200, 188, 175, 161, 147, 132,
     117, 102, 88,  75,  63,  51,  41,  32,  24,  18,  12,  8,   4,   2,   1,   0},
    {255, 255, 254, 252, 248, 244, 238, 232, 223, 214, 203, 191, 179, 165, 151, 136,
     121, 106, 91,  78,  65,  53,  43,  33,  25,  18,  13,  8,   5,   2,   1,   0},
    {255, 255, 254, 252, 249, 245, 239, 232, 224, 215, 204, 193, 180, 167, 152, 137,
     122, 107, 93,  79,  66,  54,  44,  34,  26,  19,  13,  8,   5,   2,   1,   0},
    {255, 255, 254, 252, 249, 245, 239, 233, 225, 216, 205, 194, 181, 168, 153, 138,
     123, 108, 94,  80,  67,  55,  44,  35,  26,  19,  13,  9,   5,   2,   1,   0},
    {255, 255, 254, 252, 249, 245, 240, 233, 225, 216, 206, 194, 182, 168, 154, 139,
     124, 109, 94,  80,  68,  56,  45,  35,  27,  19,  13,  9,   5,   2,   1,   0},
    {255, 255, 254, 252, 249, 245, 240, 233, 225, 216, 206, 195, 182, 169, 154, 140,
     124, 109, 95,  81,  68,  56,  45,  35,  27,  20,  14,  9,   5,   2,   1,   0},
    {255, 255, 254, 252, 249, 245, 240, 233, 226, 216, 206, 195, 182, 169, 155, 140,
     125, 110, 95,  81,  68,  56,  45,  35,  27,  20,  14,  9,   5,   3,   1,   0},
    {255, 255, 254, 252, 249, 245, 240, 233, 226, 217, 206, 195, 183, 169, 155, 140,
     125, 110, 95,  81,  68,  56,  45,  36,  27,  20,  14,  9,   5,   3,   1,   0},
    {255, 255, 254, 252, 249, 245, 240, 234, 226, 217, 207, 195, 183, 169, 155, 140,
     125, 110, 96,  82,  69,  56,  46,  36,  27,  20,  14,  9,   5,   3,   1,   0},
    {255, 255, 254, 252, 250, 246, 241, 235, 227, 218, 208, 197, 185, 172, 158, 143,
     127, 112, 97,  83,  70,  58,  47,  37,  28,  20,  14,  9,   5,   3,   1,   0},
};

inline int halfUp(double v) { return truncToI32(std::floor(v + 0.5)); }

template <class Pixel>
class DabPainter {
  public:
    explicit DabPainter(const LineCanvas& lineCanvas) : canvas(lineCanvas) {}

    // One dab. hollow: a large one may leave its middle to others.
    void paint(const Pixel& dabPen, double x, double y, double r, bool hollow) {
        pen = dabPen;
        mayLeaveMiddle = hollow;
        readTableFor(r);
        if (r < 5.0) {
            paintSmall(x, y, r);
        } else {
            paintLarge(x, y, r);
        }
    }

  private:
    void readTableFor(double r) {
        const int n = truncToI32(r);
        rowLow = std::min(n, 11);
        rowHigh = std::min(n + 1, 11);
        weightHigh = n < 11 ? static_cast<int>((r - n) * 65536.0) : 0;
    }

    // At signed distance d from the circle, negative inside.
    int coverageAt(double d) const {
        const int c = std::clamp(truncToI32((d + 1.0) * 16.0 + 0.5), 0, 31);
        const int low = kCoverage[rowLow][c];
        if (weightHigh == 0) return low;
        return (low * (65536 - weightHigh) + kCoverage[rowHigh][c] * weightHigh + 32768) >> 16;
    }

    Pixel& at(int x, int y) const {
        auto* row = static_cast<unsigned char*>(canvas.pixels) +
                    static_cast<std::ptrdiff_t>(canvas.rowBytes) * y;
        return reinterpret_cast<Pixel*>(row)[x];
    }

    void plot(int x, int y, int g) const {
        if (x < 0 || y < 0 || x >= canvas.width || y >= canvas.height || g < 1) return;
        merge(at(x, y), pen, ChannelsOf<Pixel>::covered(pen.alpha, g));
    }

    void paintSmall(double x, double y, double r) const {
        int xa = truncToI32(x - r), xb = truncToI32(0.5 + x + r);
        int ya = truncToI32(y - r), yb = truncToI32(0.5 + y + r);
        if (xa >= canvas.width || xb < 0 || ya >= canvas.height || yb < 0) return;
        xa = std::max(xa, 0);
        ya = std::max(ya, 0);
        xb = std::min(xb, canvas.width - 1);
        yb = std::min(yb, canvas.height - 1);
        const double p = xa - x, q = ya - y, D = r + r, inc = 1.0 / r;
        double dRow = (p * p - r * r + q * q) / D;
        const double stepX0 = (p * 2.0 + 1.0) / D;
        double stepY = (q * 2.0 + 1.0) / D;
        for (int Y = ya; Y <= yb; ++Y) {
            double d = dRow, stepX = stepX0;
            for (int X = xa; X <= xb; ++X) {
                plot(X, Y, coverageAt(d));
                d += stepX;
                stepX += inc;
            }
            dRow += stepY;
            stepY += inc;
        }
    }

    // The dab's centre: the pixel that holds it, and the rest in sixteenths.
    void place(double x, double y, double r) {
        xi = truncToI32(std::floor(x));
        yi = truncToI32(std::floor(y));
        fx = halfUp((x - xi) * 16.0);
        fy = halfUp((y - yi) * 16.0);
        cx = 0.0625 * fx;
        cy = 0.0625 * fy;
        radius = r;
        rest = halfUp(((-16.0 * r) * r + fx * cx + fy * cy) * 4.0);
        firstRow = halfUp(cy - r) - 5;
        rowCount = 2 * truncToI32(r + 5.0);
        left.assign(static_cast<std::size_t>(rowCount), INT_MIN);
        right.assign(static_cast<std::size_t>(rowCount), INT_MAX);
    }

    double distance(int X, int Y) const {
        const double dx = X - cx, dy = Y - cy;
        return (dx * dx + dy * dy - radius * radius) / (2.0 * radius);
    }

    // 64 times the squared distance from the centre less the radius', at half the doubled place.
    bool insideAt(std::int64_t twiceX, std::int64_t twiceY) const {
        return 16 * twiceX * twiceX - 4 * fx * twiceX + 16 * twiceY * twiceY - 4 * fy * twiceY +
                   rest <
               0;
    }

    void paintLarge(double x, double y, double r) {
        place(x, y, r);
        int X = truncToI32(std::ceil(cx));
        int Y = halfUp(cy + std::sqrt(r * r - (X - cx) * (X - cx)));
        const auto u = [&] { return 16 * X - fx; };
        const auto v = [&] { return 16 * Y - fy; };
        // Counterclockwise on the screen: right along the bottom, up, left along the top, down. The
        // side step is taken when the midpoint lies inside or outside of the circle, as told.
        const auto arc = [&](auto runs, int moveX, int moveY, int sideX, int sideY, bool inside,
                             int outX, int outY) {
            while (runs()) {
                X += moveX;
                Y += moveY;
                if (insideAt(2 * X + sideX, 2 * Y + sideY) == inside) {
                    X += sideX;
                    Y += sideY;
                }
                paintStep(X, Y, outX, outY);
            }
        };
        arc([&] { return v() > u(); }, 1, 0, 0, -1, false, 0, 1);
        arc([&] { return v() > 0; }, 0, -1, 1, 0, true, 1, 0);
        arc([&] { return u() > -v(); }, 0, -1, -1, 0, false, 1, 0);
        arc([&] { return u() > 0; }, -1, 0, 0, -1, true, 0, -1);
        arc([&] { return u() > v(); }, -1, 0, 0, 1, false, 0, -1);
        arc([&] { return v() < 0; }, 0, 1, -1, 0, true, -1, 0);
        arc([&] { return v() < -u(); }, 0, 1, 1, 0, false, -1, 0);
        arc([&] { return u() < 0; }, 1, 0, 0, 1, true, 0, 1);
        for (int i = rowCount - 1; i >= 0; --i) fillRow(i);
    }

    // The pixel of the walk and its neighbour on the other side of the circle.
    void paintStep(int X, int Y, int outX, int outY) {
        const double d = distance(X, Y);
        const int side = d < 0 ? 1 : -1;
        const int pairX = X + side * outX, pairY = Y + side * outY;
        plot(xi + X, yi + Y, coverageAt(d));
        plot(xi + pairX, yi + pairY, coverageAt(distance(pairX, pairY)));
        record(X, Y);
        record(pairX, pairY);
    }

    // What lies inside begins one pixel behind the innermost one of the edge.
    void record(int X, int Y) {
        const auto row = static_cast<std::size_t>(Y - firstRow);
        if (X <= truncToI32(cx)) {
            left[row] = std::max(left[row], X + 1);
        } else {
            right[row] = std::min(right[row], X - 1);
        }
    }

    void fillRow(int i) const {
        const auto row = static_cast<std::size_t>(i);
        if (left[row] == INT_MIN || right[row] == INT_MAX || left[row] > right[row]) return;
        const int y = yi + i + firstRow;
        if (y < 0 || y >= canvas.height) return;
        const int from = std::max(left[row] + xi, 0);
        const int to = std::min(right[row] + xi, canvas.width - 1);
        const int depth = rowCount / 2 - 5 - std::abs(i + firstRow);
        const bool whole = !mayLeaveMiddle || to - from < 6 || depth < 4;
        for (int x = from; x <= to; ++x) {
            if (whole || x - from < 3 || to - x < 3) merge(at(x, y), pen, pen.alpha);
        }
    }

    const LineCanvas& canvas;
    Pixel pen{};
    bool mayLeaveMiddle = false;
    int rowLow = 0, rowHigh = 0, weightHigh = 0;  // how the radius reads the table
    int xi = 0, yi = 0, fx = 0, fy = 0;
    double cx = 0, cy = 0, radius = 0;
    std::int64_t rest = 0;
    int firstRow = 0, rowCount = 0;
    std::vector<int> left, right;  // of the dab's rows
};

}  // namespace reference
