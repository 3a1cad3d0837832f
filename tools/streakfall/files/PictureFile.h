// Reading and writing picture files. Colour is kept straight on both sides: nothing is multiplied
// by alpha or divided by it, whatever the format's custom, so that a picture that goes through
// unchanged comes out unchanged. No colour management: values are taken as they stand.
#pragma once

#include <optional>
#include <string>

#include "host/Image.h"

namespace tool {

// A PNG, TIFF, JPEG or EXR file in the depth given, or in the file's own: 8 bits, 16 bits, or
// float for everything wider. Grey becomes red, green and blue; without alpha it is opaque. A
// photo that says how it was held is turned upright. Throws Failure (input).
[[nodiscard]] standin::Image readPicture(const std::string& path,
                                         std::optional<standin::Depth> depth);

// The depth that the file has of its own, from its head alone; nothing when it cannot be read.
[[nodiscard]] std::optional<standin::Depth> pictureDepth(const std::string& path);

// The whole file can be decoded.
[[nodiscard]] bool isWholePicture(const std::string& path);

// What a picture of this depth is stored as under this name: "PNG 8 bits", "EXR float".
// Throws Failure (usage) for a name that does not end in .png, .tif, .tiff or .exr.
[[nodiscard]] std::string describeOutput(const std::string& path, standin::Depth depth);

// The depth to render in when nothing else says it: float for EXR, else 8 bits.
[[nodiscard]] standin::Depth depthForOutput(const std::string& path);

// Writes the picture whole or not at all. PNG takes 8 or 16 bits (float is cut to 0 to 1), TIFF
// all three, EXR always float. The same picture gives the same bytes. Throws Failure (output).
void writePicture(const std::string& path, const standin::Image& image);

}  // namespace tool
