// The slots of a row half, each with the row places from which its line touches the frame.
#include <algorithm>
#include <cmath>

#include "lines/LineField.h"
#include "lines/Trigonometry.h"

namespace streakfall {
namespace {

constexpr double kArchLimit = 1.5882496193148399;  // 91 degrees; the bound itself is allowed
constexpr double kBandLimit = 1.53588974175501;    // 88 degrees
constexpr int kFailuresThatEndAHalf = 5;

// What a range is widened by, so that it holds every place from which the rounded line touches:
// a part of the sizes that went into the line, some thousands of their roundings.
constexpr double kRoundingPart = 1e-12;
constexpr double kLeastRoom = 1e-3;  // pixels

// Narrows [low, high] to the r with from <= origin + r x direction <= to.
void narrow(double origin, double direction, double from, double to, double& low, double& high) {
    if (direction == 0.0) {
        if (origin < from || origin > to) high = -HUGE_VAL;
        return;
    }
    const double a = (from - origin) / direction, b = (to - origin) / direction;
    low = std::max(low, std::min(a, b));
    high = std::min(high, std::max(a, b));
}

}  // namespace

// The way of a slot's line through the buffer while its row moves: the line covers
// [start + rate x, start + rate x + length] of a ray, and no more than [low, high].
struct LineField::Path {
    double originX, originY;        // of the ray, buffer coordinates
    double directionX, directionY;  // a unit vector
    double start, rate, length;
    double low, high;
    double sizes;  // of all that was added up, pixels
};

LineField::Path LineField::straightPath(const RowSlot& slot, const Slots& slots) const {
    const LinePrototype& q = slot.prototype;
    const double y = q.lateralOffset + slot.y;
    const double s = q.lengthFactor * q.baseLength;
    return {.originX = startX - y * slots.sine,
            .originY = startY + y * slots.cosine,
            .directionX = slots.cosine,
            .directionY = slots.sine,
            .start = q.axialOffset - (s - q.baseLength) * 0.5,
            .rate = 1.0,
            .length = s,
            .low = -HUGE_VAL,
            .high = HUGE_VAL,
            .sizes = std::fabs(y) + std::fabs(q.axialOffset) + std::fabs(s) + q.baseLength};
}

LineField::Path LineField::fanPath(const RowSlot& slot, const Slots& slots) const {
    const LinePrototype& q = slot.prototype;
    const auto [sine, cosine] = sineCosine(q.lateralOffset + slot.y);
    const double a = archRate, apex = slots.apex, centre = a * apex;
    const double rim = apex * std::sqrt(a * a / (cosine * cosine + a * a * (sine * sine)));
    // In a band all is stretched by 1 / cos.
    const double rate = bandMode == kArch ? 1.0 : 1.0 / cosine;
    const double g = q.baseLength * rate, s = q.lengthFactor * g;
    const double start = q.axialOffset * rate + (apex - apex * rate) - (s - g) * 0.5 - rim;
    const double sizes = std::fabs(centre) + std::fabs(rim) + std::fabs(apex) * (1.0 + rate) +
                         std::fabs(q.axialOffset) * rate + g + std::fabs(s);
    // No line crosses the apex.
    return {.originX = startX + centre * slots.cosine,
            .originY = startY + centre * slots.sine,
            .directionX = slots.cosine * cosine - slots.sine * sine,
            .directionY = slots.sine * cosine + slots.cosine * sine,
            .start = start,
            .rate = rate,
            .length = s,
            .low = taper >= 0.0 ? 0.0 : -HUGE_VAL,
            .high = taper >= 0.0 ? HUGE_VAL : 0.0,
            .sizes = sizes};
}

// False when the line of a slot touches the frame from no place: also for what is no number, for
// then neither are the line's ends.
bool LineField::findRange(RowSlot& slot, const Slots& slots) const {
    const Path path = taperEnabled ? fanPath(slot, slots) : straightPath(slot, slots);
    const double frame = std::fabs(clipRect.left) + std::fabs(clipRect.right) +
                         std::fabs(clipRect.top) + std::fabs(clipRect.bottom);
    const double room = kLeastRoom + kRoundingPart * (path.sizes + frame + reach +
                                                      std::fabs(startX) + std::fabs(startY));
    double low = path.low, high = path.high;
    narrow(path.originX, path.directionX, clipRect.left - room, clipRect.right + room, low, high);
    narrow(path.originY, path.directionY, clipRect.top - room, clipRect.bottom + room, low, high);
    if (low - room > high + room) return false;
    const double from = low - room - std::max(0.0, path.length) - path.start;
    const double to = high + room - std::min(0.0, path.length) - path.start;
    slot.range = {from / path.rate, to / path.rate};
    return slot.range.from <= slot.range.to;
}

void LineField::addHalf(RowPattern& pattern, const Slots& slots, double y, double step,
                        std::int32_t seedWord) const {
    // A first group larger than the list leaves nothing to place.
    if (prototypeCount <= 0) return;
    const double limit = bandMode == kArch ? kArchLimit : kBandLimit;
    int failures = 0;
    std::int32_t index = 0;
    for (std::int32_t i = 0; i < slots.count; ++i, y = y + step) {
        const LinePrototype& q = prototypes[static_cast<std::size_t>(index)];
        if (++index == prototypeCount) index = 0;
        const double phi = q.lateralOffset + y;
        if (taperEnabled && (phi > limit || phi < -limit)) {
            if (++failures >= kFailuresThatEndAHalf && q.groupId > 0) break;
            continue;
        }
        failures = 0;
        if (!(q.thickness > 0.0)) continue;
        // Seeds count slots, stored or not, so clipping a neighbour never changes a line.
        const auto seed = static_cast<std::int32_t>(static_cast<std::uint32_t>(seedWord) +
                                                    static_cast<std::uint32_t>(i));
        RowSlot slot{q, y, {}, seed};
        if (findRange(slot, slots)) pattern.add(slot);
    }
}

}  // namespace streakfall
