// From a slot and its prototype to a line: straight or fanned, turned onto the field axis,
// tested against the frame.
#include <cmath>

#include "lines/LineField.h"
#include "lines/Trigonometry.h"

namespace streakfall {
namespace {

void placeStraight(const LinePrototype& q, double px, double py, LineRecord& line) {
    const double s = q.lengthFactor * q.baseLength;
    // The length factor grows a line about its middle.
    line.x0 = q.axialOffset + px - (s - q.baseLength) * 0.5;
    line.y0 = line.y1 = q.lateralOffset + py;
    line.x1 = s + line.x0;
    line.thickness = q.thickness;
    line.axialPosition = line.x0;
}

// A fan: the lateral coordinate is an angle about the apex, and the slots of a row start from an
// ellipse through the field origin, with its centre at (a x apex, 0).
void placeFan(const LineField& field, double apex, const LinePrototype& q, double px, double py,
              LineRecord& line) {
    const double a = field.archRate;
    const double phi = q.lateralOffset + py;
    const auto [sine, cosine] = sineCosine(phi);

    double s, r;
    if (field.bandMode == LineField::kArch) {
        s = q.lengthFactor * q.baseLength;
        r = q.axialOffset + px - (s - q.baseLength) * 0.5;
    } else {
        // Lines are cut by constant axial places, so they grow by 1 / cos toward the sides.
        const double e = q.axialOffset + q.baseLength + px - apex;
        const double f = e / cosine;
        const double g = (q.baseLength / e) * f;
        s = q.lengthFactor * g;
        r = (f + apex) - g - (s - g) * 0.5;
    }
    double r0 = r - apex * std::sqrt(a * a / (cosine * cosine + a * a * (sine * sine)));
    double r1 = r0 + s;

    // A line never crosses the apex; one that lies beyond it is an empty success. The limits
    // are written so that a NaN passes on and the clip test drops the line.
    const bool beyond = field.taper >= 0.0 ? r1 < 0.0 : r0 > 0.0;
    if (field.taper >= 0.0) {
        if (r0 < 0.0) r0 = 0.0;
    } else {
        if (r1 > 0.0) r1 = 0.0;
    }
    const double centre = a * apex;
    line.x0 = centre + r0 * cosine;
    line.y0 = r0 * sine;
    line.x1 = centre + r1 * cosine;
    line.y1 = r1 * sine;
    line.thickness = beyond ? 0.0 : q.thickness;
    line.axialPosition = centre + r0;
}

}  // namespace

bool LineField::place(const RowSlot& slot, const Slots& slots, double x, LineRecord& line) const {
    if (taperEnabled) {
        placeFan(*this, slots.apex, slot.prototype, x, slot.y, line);
    } else {
        placeStraight(slot.prototype, x, slot.y, line);
    }
    if (!(line.thickness > 0.0)) return false;
    const double px = line.x0, py = line.y0, qx = line.x1, qy = line.y1;
    line.x0 = startX + px * slots.cosine - py * slots.sine;
    line.y0 = startY + px * slots.sine + py * slots.cosine;
    line.x1 = startX + qx * slots.cosine - qy * slots.sine;
    line.y1 = startY + qx * slots.sine + qy * slots.cosine;
    line.seed = slot.seed;
    return segmentTouchesRect(line.x0, line.y0, line.x1, line.y1, clipRect);
}

}  // namespace streakfall
