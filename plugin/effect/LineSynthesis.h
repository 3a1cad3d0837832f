// From a frame's parameters to the list of its lines. Needs no host.
#pragma once

#include <vector>

#include "effect/ConvertedParams.h"
#include "lines/LineRecord.h"

namespace streakfall {

// Appends the frame's lines in drawing order; none at a density of 0 or below, nor in a frame
// without pixels.
void generateLines(const ConvertedParams& params, const FrameInfo& frame,
                   std::vector<LineRecord>& lines);

}  // namespace streakfall
