// Bounds that no value inside the sliders' ranges meets, pixels.
#pragma once

namespace streakfall {

inline constexpr double kMaxLineLength = 131072.0;  // a longer line is not drawn
inline constexpr double kMaxThickness = 4096.0;     // a thicker line is drawn at this thickness
// A gap that the wave tears between two steps is bridged up to here; the tallest wave on its
// shortest length moves the pen by less than half of it.
inline constexpr double kMaxBridge = 2048.0;
// Of a dab; from here on it is large: it is drawn by its outline.
inline constexpr double kLargeRadius = 5.0;

}  // namespace streakfall
