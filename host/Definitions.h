#pragma once

#include "host/Keyframes.h"
#include "hostapi/hostapi.h"

namespace standin {

// Full-size layer pixels to those of the picture that is rendered.
struct PixelScale {
    PF_RationalScale x{1, 1};
    PF_RationalScale y{1, 1};
};

// Writes the value into a definition in its kind's own form: whole numbers to the nearest, colours
// within 0 to 255, points and angles as 16.16. Ranges are not applied.
void putValue(PF_ParamDef& definition, const Value& value, const PixelScale& scale);
// The value that a definition holds.
Value takeValue(const PF_ParamDef& definition, const PixelScale& scale);

}  // namespace standin
