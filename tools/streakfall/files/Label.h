// Words on a picture, drawn by the picture library.
#pragma once

#include <string>

#include "host/Image.h"

namespace tool {

// Black letters of that height in pixels, the first one at `left`, standing on `baseline`. What
// does not fit between left and right is left out, with dots in its place. The picture has 8 bits.
// Throws Failure (output) when there is no font.
void drawLabel(standin::Image& picture, int left, int right, int baseline, int height,
               const std::string& text);

}  // namespace tool
