#pragma once

#include <cstdint>

namespace streakfall {

// One finished line. Lengths in pixels of the line buffer at the render scale.
struct LineRecord {
    double x0, y0;         // start of the centre line, buffer coordinates
    double x1, y1;         // its end
    double thickness;      // full thickness, above 0 in a stored record
    double axialPosition;  // start along the row in the field's own coordinates: the wave's base
    std::int32_t seed;     // feeds colour jitter and wave
};

}  // namespace streakfall
