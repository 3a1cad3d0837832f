// From a slot and its prototype to a line: straight or fanned, turned onto the field axis,
// tested against the frame.
#include <cmath>

#include "lines/LineField.h"
#include "lines/Trigonometry.h"

namespace streakfall {
namespace {

constexpr double kArchLimit = 1.5882496193148399;  // 91 degrees; the bound itself is allowed
constexpr double kBandLimit = 1.53588974175501;    // 88 degrees
constexpr int kFailuresThatEndAHalf = 5;

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
bool placeFan(const LineField& field, double apex, const LinePrototype& q, double px, double py,
              LineRecord& line) {
    const double a = field.archRate;
    const double phi = q.lateralOffset + py;
    const double limit = field.bandMode == LineField::kArch ? kArchLimit : kBandLimit;
    if (phi > limit || phi < -limit) return false;
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
    return true;
}

// Whether two places lie on one side of a range. False for what is no number.
bool apart(double p, double q, double from, double to) {
    return (p < from && q < from) || (p > to && q > to);
}

}  // namespace

bool LineField::place(const LinePrototype& q, const Slots& slots, double x, double y,
                      LineRecord& line) const {
    if (taperEnabled) return placeFan(*this, slots.apex, q, x, y, line);
    placeStraight(q, x, y, line);
    return true;
}

void LineField::runSlots(std::vector<LineRecord>& lines, const Slots& slots, const Axis& axis,
                         double x, double y, double step, std::int32_t seedWord) const {
    // A first group larger than the list leaves nothing to place.
    if (prototypeCount <= 0) return;
    int failures = 0;
    std::int32_t index = 0;
    for (std::int32_t i = 0; i < slots.count; ++i, y = y + step) {
        const LinePrototype& q = prototypes[static_cast<std::size_t>(index)];
        if (++index == prototypeCount) index = 0;
        LineRecord line;
        if (!place(q, slots, x, y, line)) {
            if (++failures >= kFailuresThatEndAHalf && q.groupId > 0) break;
            continue;
        }
        failures = 0;
        if (!(line.thickness > 0.0)) continue;
        const double px = line.x0, py = line.y0, qx = line.x1, qy = line.y1;
        if (apart(px, qx, axis.axialFrom, axis.axialTo)) continue;
        if (apart(py, qy, axis.lateralFrom, axis.lateralTo)) continue;
        line.x0 = startX + px * axis.cosine - py * axis.sine;
        line.y0 = startY + px * axis.sine + py * axis.cosine;
        line.x1 = startX + qx * axis.cosine - qy * axis.sine;
        line.y1 = startY + qx * axis.sine + qy * axis.cosine;
        // Seeds count slots, stored or not, so clipping a neighbour never changes a line.
        line.seed = static_cast<std::int32_t>(static_cast<std::uint32_t>(seedWord) +
                                              static_cast<std::uint32_t>(i));
        if (segmentTouchesRect(line.x0, line.y0, line.x1, line.y1, clipRect)) {
            lines.push_back(line);
        }
    }
}

}  // namespace streakfall
