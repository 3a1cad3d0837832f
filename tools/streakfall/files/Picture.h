// A picture with what its file says of it beside the pixels.
//
// Pictures are straight: colour is not multiplied by alpha. Files hold what readers of their format
// expect: EXR associated colour (multiplied by alpha), TIFF what its tag says, PNG and the rest
// straight. Reading undoes it and writing does it, both in double precision, so that a float value
// may come back one unit in its last place away. Values outside 0 to 1 stay in float. Associated
// colour under alpha 0 is light without cover; it is kept as it is on the way through. No colour
// management: values are taken as they stand.
#pragma once

#include <OpenImageIO/paramlist.h>

#include <string>

#include "host/Image.h"

namespace tool {

enum class Alpha { kStraight, kAssociated };

struct PictureTraits {
    int width = 0, height = 0;
    standin::Depth depth = standin::Depth::bits8;  // float for everything wider than 16 bits
    bool half = false;                             // stored in half precision
    bool associated = false;                       // colour was taken as multiplied by alpha
    std::string format;                            // "png", "tiff", "jpeg", "openexr"
    // Layers and parts of the file that are not in the picture, in words; empty when none.
    std::string dropped;
    // What a rendered picture takes over: pixel aspect, frame rate, time code, colour space and
    // profile, description.
    OIIO::ParamValueList carried;
};

struct Picture {
    standin::Image image;
    PictureTraits traits;
};

}  // namespace tool
