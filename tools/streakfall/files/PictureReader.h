// Reading picture files: PNG, TIFF, JPEG and EXR. See Picture.h on alpha.
#pragma once

#include <optional>
#include <string>

#include "Picture.h"

namespace tool {

// How a file is to be understood.
struct ReadWishes {
    std::string layer;  // of an EXR; empty: its own
    // Of an EXR or a TIFF, whatever it says itself; other formats hold straight colour.
    std::optional<Alpha> alpha;
};

// In the depth given, or in the file's own. Grey becomes red, green and blue; without alpha it is
// opaque. A photo that says how it was held is turned upright. Throws Failure (input).
[[nodiscard]] Picture readPictureFile(const std::string& path, std::optional<standin::Depth> depth,
                                      const ReadWishes& wishes = {});

// The pixels alone.
[[nodiscard]] standin::Image readPicture(const std::string& path,
                                         std::optional<standin::Depth> depth);

// What the file's head says. Throws Failure (input).
[[nodiscard]] PictureTraits readTraits(const std::string& path, const ReadWishes& wishes = {});

// The whole file can be decoded.
[[nodiscard]] bool isWholePicture(const std::string& path);

// The fingerprint that writePictureFile put into the file; empty when there is none, or no whole
// picture.
[[nodiscard]] std::string storedFingerprint(const std::string& path);

}  // namespace tool
