// The diagonals of a large dab, where a flat and a steep arc meet.
#pragma once

#include "shareForLines/LargeDabShape.h"

namespace streakfall {

// Fills in where the arcs of a shape end, from its centre, radius, square and limit. False when the
// circle passes beyond a pixel there that the walk plots, and its pair. Needs a processor with
// AVX2.
bool findArcEnds(LargeDabShape& shape);

}  // namespace streakfall
