// Making picture files: PNG and raw samples of 8 or 16 bits (float is cut to 0 to 1), TIFF of all
// three depths, EXR of floats or half floats. See Picture.h on alpha.
#pragma once

#include <string>
#include <vector>

#include "Metadata.h"
#include "OutputForm.h"
#include "Picture.h"

namespace tool {

// The bytes of the file. The same picture gives the same bytes. `traits` is what the picture's
// input was. Throws Failure (output) that names `path`.
[[nodiscard]] std::vector<unsigned char> encodePicture(const std::string& path,
                                                       const standin::Image& image,
                                                       const OutputForm& form,
                                                       const PictureTraits& traits = {},
                                                       const Stamp& stamp = {});

// Writes the picture whole or not at all, in the form that is customary under that name. Throws
// Failure (output).
void writePicture(const std::string& path, const standin::Image& image);

// From now on a picture is read and written on the thread that asks, for programs that have a
// thread for each picture.
void useOneThreadEach();

}  // namespace tool
