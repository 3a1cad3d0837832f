// A frame's list of lines, painted in order.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <span>

#include "shareForLines/InstructionSet.h"
#include "shareForLines/LineTracer.h"

namespace streakfall {

// Looks at all lines before the first one is painted, for what of each can be seen in the end.
// alpha: of all pens.
template <class Depth>
void lookAhead(Stroke<Depth>& stroke, LineCanvas& canvas, std::span<const LineRecord> lines,
               typename Depth::Channel alpha) {
    constexpr double kWorthIt = 0.5;  // parts of the canvas that the lines would cover together
    canvas.shows.forget();
    if (alpha != Depth::kWhite || instructionSet() < InstructionSet::kAvx2) return;
    double area = 0.0;
    for (const LineRecord& line : lines) {
        const double length = std::hypot(line.x1 - line.x0, line.y1 - line.y0);
        const double ramps = stroke.inOutEnabled ? stroke.inLength + stroke.outLength : 0.0;
        const double full = std::max(length - 0.5 * ramps, 0.3 * length);
        area += std::max(line.thickness - 3.0, 0.0) * full;
    }
    if (!(area > kWorthIt * canvas.width * canvas.height)) return;
    canvas.shows.start(canvas.width, canvas.height);
    for (const LineRecord& line : lines) {
        stroke.thickness = line.thickness;
        canvas.shows.add(stroke, line);
    }
}

// Paints the lines in list order. penOf(i): the pen of line i; all pens have one alpha. after(i)
// hears of each line that is done, and stops the drawing by false.
template <class Depth, class PenOf, class After>
void traceLines(Stroke<Depth>& stroke, LineCanvas& canvas, std::span<const LineRecord> lines,
                PenOf penOf, After after) {
    if (lines.empty() || canvas.world == nullptr) return;
    lookAhead(stroke, canvas, lines, penOf(std::size_t{0}).alpha);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        stroke.pen = penOf(i);
        stroke.thickness = lines[i].thickness;
        canvas.shows.at(i);
        traceLine(stroke, canvas, lines[i]);
        if (!after(i)) return;
    }
}

}  // namespace streakfall
