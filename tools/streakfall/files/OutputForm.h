// The form in which a picture is stored: by its name's ending and what was asked for.
#pragma once

#include <OpenImageIO/typedesc.h>

#include <optional>
#include <string>

#include "Picture.h"

namespace tool {

// What a command line says of the output; what is not given follows the format's custom.
struct OutputWishes {
    std::string stream;  // --format of a stream: "png" or "rgba"; empty: by the file's ending
    std::optional<Alpha> alpha;
    bool half = false;
    std::string compression;  // "NAME" or "NAME:LEVEL"; empty: the format's customary one
};

struct OutputForm {
    std::string format;  // "png", "tiff", "openexr", or "rgba": samples without a head
    std::string label;   // "PNG 8 bits", "EXR half"
    OIIO::TypeDesc type;
    Alpha alpha = Alpha::kStraight;
    // As the picture library takes them; empty, or -1: its own.
    std::string compression;
    int level = -1;
};

// Of a picture of this depth under this name. Throws Failure (usage) that names the option, or for
// a name that does not end in .png, .tif, .tiff or .exr.
[[nodiscard]] OutputForm chooseOutputForm(const std::string& path, standin::Depth depth,
                                          const OutputWishes& wishes);

// The depth to render in when nothing else says it: float for EXR, else 8 bits.
[[nodiscard]] standin::Depth depthForOutput(const std::string& path, const OutputWishes& wishes);

}  // namespace tool
