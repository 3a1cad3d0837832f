// The plain twin of the line field: every row and every slot in turn, with no shortcut and no
// bound. The product's lists must be the same, to the bit.
//
// It has its own generator, constants and clip test, and shares the two records and the sine,
// cosine and angle of a vector.
#pragma once

#include <vector>

#include "lines/LineField.h"

namespace plain {

// The lines of the field as it is set up, in drawing order.
std::vector<streakfall::LineRecord> lines(const streakfall::LineField& field);

}  // namespace plain
