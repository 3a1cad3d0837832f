// A picture at a part of its size, as a host previews it.
#pragma once

#include "host/Image.h"

namespace tool {

// At 1/divisor, sides rounded up: each pixel is the mean of its square, colours weighted by
// alpha, since straight colour under alpha 0 says nothing.
[[nodiscard]] standin::Image reduced(const standin::Image& image, int divisor);

}  // namespace tool
