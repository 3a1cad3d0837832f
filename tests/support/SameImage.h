// Comparing pictures so that a failure shows itself.
#pragma once

#include "host/Image.h"

// Fails when size, depth or any byte differs, and tells the first differing pixel, how many differ
// and the largest difference of a channel, white being 1.
void expectSameImage(const standin::Image& actual, const standin::Image& expected);
