// One picture of labelled tiles: the same input under different values.
#pragma once

#include <string>
#include <vector>

#include "EffectSession.h"
#include "host/Image.h"

namespace tool {

struct Tile {
    std::vector<std::string> labels;  // a line each
    ParamTexts params;
};

struct SheetForm {
    int tileWidth = 320;  // pixels, about: a tile is a whole part of the input's size
    int columns = 0;      // 0: as many as make the sheet about as wide as high
    int frame = 0;
};

// The input must have 8 bits. Throws Failure: usage for values that cannot be read, effect, or
// output when the labels cannot be drawn.
[[nodiscard]] standin::Image makeSheet(EffectSession& session, const standin::Image& input,
                                       const std::vector<Tile>& tiles, const SheetForm& form);

}  // namespace tool
