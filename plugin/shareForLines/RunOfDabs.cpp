#include "shareForLines/RunOfDabs.h"

#include <algorithm>
#include <cmath>

namespace streakfall {

bool RunOfDabs::goesOn(const Dab& dab, const Entry& before) const {
    const double dx = dab.x - before.dab.x, dy = dab.y - before.dab.y;
    return dx * dx + dy * dy <= kMaxStep * kMaxStep &&
           std::fabs(dab.radius - before.dab.radius) <= kMaxGrowth;
}

bool RunOfDabs::add(const Dab& dab) {
    if (size == kCapacity || dab.radius > LargeDabShape::kMaxRadius) return false;
    Entry& entry = entries[static_cast<std::size_t>(size)];
    Entry* before = size > 0 ? &entry - 1 : nullptr;
    if (before != nullptr) {
        if (!goesOn(dab, *before)) return false;
        const bool same = quantiseCentre(dab.x, dab.y) == before->shape.centre &&
                          dab.radius == before->dab.radius && dab.hollow == before->dab.hollow;
        if (same) {
            ++before->times;
            return true;
        }
    }
    if (!entry.shape.place(dab.x, dab.y, dab.radius)) return false;
    entry.dab = dab;
    entry.times = 1;
    if (before == nullptr) {
        largest = smallest = dab.radius;
        anyHollow = false;
        steps = 0;
        tables.clear();
    }
    entry.coverage = tables.of(dab.radius);
    largest = std::max(largest, dab.radius);
    smallest = std::min(smallest, dab.radius);
    anyHollow = anyHollow || dab.hollow;
    countSteps(dab);
    ++size;
    return true;
}

void RunOfDabs::countSteps(const Dab& dab) {
    const std::int32_t step = std::clamp(truncToI32(along(dab.x, dab.y)), 0, kCapacity);
    for (; steps <= step; ++steps) {
        firstAtStep[static_cast<std::size_t>(steps)] = static_cast<std::int16_t>(size);
    }
}

Range RunOfDabs::between(double fromAlong, double toAlong) const {
    const std::int32_t from = truncToI32(fromAlong - 0.5), to = truncToI32(toAlong + 0.5) + 1;
    if (from >= steps || to < 0) return kNone;
    return {firstAtStep[static_cast<std::size_t>(std::max(from, 0))],
            to >= steps ? size - 1 : firstAtStep[static_cast<std::size_t>(to)]};
}

Range RunOfDabs::nearRow(std::int32_t y) const {
    const double reach = largest + kReach, rows = y - entries[0].dab.y;
    if (std::fabs(uy) * kCapacity < 1.0) return {0, size - 1};
    const double a = (rows - reach) / uy, b = (rows + reach) / uy;
    return between(std::min(a, b), std::max(a, b));
}

Range RunOfDabs::nearPixels(std::int32_t x, std::int32_t y, std::int32_t columns) const {
    const double start = along(x, y), startAcross = across(x, y);
    const double end = start + (columns - 1) * ux, endAcross = startAcross - (columns - 1) * uy;
    const double nearest = startAcross * endAcross < 0.0
                               ? 0.0
                               : std::min(std::fabs(startAcross), std::fabs(endAcross));
    const double reach = largest + kReach, width2 = reach * reach - nearest * nearest;
    if (width2 < 0.0) return kNone;
    const double width = std::sqrt(width2);
    return between(std::min(start, end) - width, std::max(start, end) + width);
}

}  // namespace streakfall
