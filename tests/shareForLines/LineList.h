// How the product draws the lines of a frame: the one place of the tests and benchmarks that knows.
#pragma once

#include <cstddef>
#include <vector>

#include "lines/LineRecord.h"
#include "shareForLines/path/Stroke.h"
#include "shareForLines/trace/LineCanvas.h"
#include "shareForLines/trace/LineTracer.h"

namespace streakfall {

// In list order, with the stroke's form. penOf(i): the pen of line i; its alpha is the same in all.
template <class Depth, class PenOf>
void drawLineList(Stroke<Depth>& stroke, LineCanvas& canvas, const std::vector<LineRecord>& lines,
                  PenOf penOf) {
    traceLines(stroke, canvas, std::span<const LineRecord>(lines), penOf,
               [](std::size_t) { return true; });
}

}  // namespace streakfall
