#include "lines/LineField.h"

namespace streakfall {
namespace {

bool contains(const Rect& rect, double x, double y) {
    return x >= rect.left && x <= rect.right && y >= rect.top && y <= rect.bottom;
}

// Solves p + s (q - p) = a + u (b - a). Parallel lines do not cross; both ends count.
bool crosses(double px, double py, double qx, double qy, double ax, double ay, double bx,
             double by) {
    const double dx = qx - px, dy = qy - py;
    const double ex = bx - ax, ey = by - ay;
    const double determinant = dx * ey - dy * ex;
    if (determinant == 0.0) return false;
    const double s = ((ax - px) * ey - (ay - py) * ex) / determinant;
    const double u = ((ax - px) * dy - (ay - py) * dx) / determinant;
    return s >= 0.0 && s <= 1.0 && u >= 0.0 && u <= 1.0;
}

}  // namespace

bool segmentTouchesRect(double px, double py, double qx, double qy, const Rect& r) {
    if (contains(r, px, py) || contains(r, qx, qy)) return true;
    return crosses(px, py, qx, qy, r.left, r.top, r.right, r.top) ||
           crosses(px, py, qx, qy, r.right, r.top, r.right, r.bottom) ||
           crosses(px, py, qx, qy, r.right, r.bottom, r.left, r.bottom) ||
           crosses(px, py, qx, qy, r.left, r.bottom, r.left, r.top);
}

}  // namespace streakfall
