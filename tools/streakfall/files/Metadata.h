// What stands in a picture file beside the pixels: what a rendered picture takes over from its
// input, and the stamp of the render that made it.
#pragma once

#include <OpenImageIO/imageio.h>

#include <string>

namespace tool {

struct Stamp {
    std::string program;      // "streakfall 1.5.2"
    std::string fingerprint;  // of all that the picture depends on; empty: no stamp
    std::string look;         // the values in plain words
};

// Pixel aspect and resolution, frame rate, time code, colour space, primaries and profile,
// description.
[[nodiscard]] OIIO::ParamValueList carriedMetadata(const OIIO::ImageSpec& input);

// As the format of the output has a place for it.
void putMetadata(OIIO::ImageSpec& output, const std::string& format,
                 const OIIO::ParamValueList& carried, const Stamp& stamp);

// Of an EXR whose colour is straight against the format's custom: "straight".
inline constexpr char kAlphaAttribute[] = "streakfall:alpha";

// Of a stamp in the file; empty when there is none.
[[nodiscard]] std::string stampedFingerprint(const OIIO::ImageSpec& spec);
[[nodiscard]] std::string stampedLook(const OIIO::ImageSpec& spec);

}  // namespace tool
