// Line tracing: puts one line on the pixels as a row of round dabs, one a pixel of its path.
#pragma once

#include "lines/LineRecord.h"
#include "shareForLines/LineCanvas.h"
#include "shareForLines/Stroke.h"

namespace streakfall {

// Bounds that no value inside the sliders' ranges meets: a line longer than this many pixels is
// not drawn, one thicker is drawn at this thickness.
inline constexpr double kMaxLineLength = 131072.0;
inline constexpr double kMaxThickness = 4096.0;
// Likewise a gap that the wave tears between two steps is bridged up to this many pixels; the
// tallest wave on its shortest length moves the pen by less than half of it.
inline constexpr double kMaxBridge = 2048.0;

// Draws one line with the stroke's pen and thickness. What is thin, transparent, off the buffer
// or without a world paints nothing. Throws only when the span table cannot grow.
template <class Depth>
void traceLine(Stroke<Depth>& stroke, LineCanvas& canvas, const LineRecord& line);

}  // namespace streakfall
