#pragma once

#include <cstdint>

namespace streakfall {

// The random make-up of one slot of a row half.
struct LinePrototype {
    double axialOffset;    // added to the slot's place along the axis, pixels
    double lateralOffset;  // added across it: pixels, or radians in a fan
    double baseLength;     // length before variation, pixels
    double lengthFactor;   // multiplier on baseLength
    double thickness;      // full thickness, pixels; may be 0 or below, such a slot draws nothing
    std::int32_t groupId;  // number of the slot, or of its group
};

}  // namespace streakfall
