// How the product draws the lines of a frame: the one place of the tests and benchmarks that knows.
#pragma once

#include <cstddef>
#include <vector>

#include "lines/LineRecord.h"
#include "shareForLines/LineCanvas.h"
#include "shareForLines/LineTracer.h"
#include "shareForLines/Stroke.h"

namespace streakfall {

// In list order, with the stroke's form. penOf(i): the pen of line i; its alpha is the same in all.
template <class Depth, class PenOf>
void drawLineList(Stroke<Depth>& stroke, LineCanvas& canvas, const std::vector<LineRecord>& lines,
                  PenOf penOf) {
    for (std::size_t i = 0; i < lines.size(); ++i) {
        stroke.pen = penOf(i);
        stroke.thickness = lines[i].thickness;
        traceLine(stroke, canvas, lines[i]);
    }
}

}  // namespace streakfall
