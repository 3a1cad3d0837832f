// The pixels of a small dab and the exact signed distance of each.
#pragma once

#include <algorithm>
#include <cstdint>

#include "lines/Convert.h"

namespace streakfall {

// Bounding box of a small dab, limited to the buffer; all ends included.
struct SmallDabBox {
    std::int32_t xa, xb, ya, yb;

    bool operator==(const SmallDabBox&) const = default;

    // False when nothing of the box lies in the buffer.
    bool place(double x, double y, double r, std::int32_t width, std::int32_t height) {
        xa = std::max(truncToI32(x - r), 0);
        ya = std::max(truncToI32(y - r), 0);
        xb = std::min(truncToI32(0.5 + x + r), width - 1);
        yb = std::min(truncToI32(0.5 + y + r), height - 1);
        return xa <= xb && ya <= yb;
    }
};

// Signed distance along the box by forward differences from its corner:
//
//   d(X, Y) = ((X - x)^2 + (Y - y)^2 - r^2) / (2 r)
//
// two additions a pixel. The order of the additions is part of the result.
class DistanceChain {
  public:
    DistanceChain(const SmallDabBox& box, double x, double y, double r) : inc(1.0 / r) {
        const double p = box.xa - x, q = box.ya - y, D = r + r;
        rowDistance = distance = (p * p - r * r + q * q) / D;
        rowStepX = stepX = (p * 2.0 + 1.0) / D;
        stepY = (q * 2.0 + 1.0) / D;
    }

    // The distance of the pixel that the chain stands on; moves on in the row.
    double nextPixel() {
        const double d = distance;
        distance += stepX;
        stepX += inc;
        return d;
    }

    // Moves to the first pixel of the next row.
    void nextRow() {
        rowDistance += stepY;
        stepY += inc;
        distance = rowDistance;
        stepX = rowStepX;
    }

  private:
    double inc;
    double rowDistance, rowStepX, stepY;
    double distance, stepX;
};

}  // namespace streakfall
