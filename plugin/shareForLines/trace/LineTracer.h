// Line tracing: puts lines on the pixels, each as a row of round dabs, one a pixel of its path.
#pragma once

#include <memory>
#include <span>

#include "lines/LineRecord.h"
#include "shareForLines/path/Stroke.h"
#include "shareForLines/trace/FramePainter.h"
#include "shareForLines/trace/LineCanvas.h"

namespace streakfall {

// Draws one line with the stroke's pen and thickness. What is thin, transparent, off the buffer
// or without a world paints nothing. Throws only when there is no memory.
template <class Depth>
void traceLine(FramePainter<Depth>& painter, Stroke<Depth>& stroke, const LineCanvas& canvas,
               const LineRecord& line) {
    if (!(stroke.thickness > 0.0) || stroke.pen.alpha == 0 || canvas.world == nullptr) return;
    painter.paint(stroke, line);
}

// The same for a line by itself.
template <class Depth>
void traceLine(Stroke<Depth>& stroke, LineCanvas& canvas, const LineRecord& line) {
    traceLine(*std::make_unique<FramePainter<Depth>>(canvas), stroke, canvas, line);
}

// Paints a frame's lines in list order. penOf(i): the pen of line i; all pens have one alpha.
// after(i) hears of each line that is done, and stops the drawing by false.
template <class Depth, class PenOf, class After>
void traceLines(Stroke<Depth>& stroke, LineCanvas& canvas, std::span<const LineRecord> lines,
                PenOf penOf, After after) {
    if (lines.empty() || canvas.world == nullptr) return;
    const auto painter = std::make_unique<FramePainter<Depth>>(canvas);
    painter->lookAhead(stroke, lines, penOf(std::size_t{0}).alpha);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        stroke.pen = penOf(i);
        stroke.thickness = lines[i].thickness;
        painter->at(i);
        traceLine(*painter, stroke, canvas, lines[i]);
        if (!after(i)) return;
    }
}

}  // namespace streakfall
