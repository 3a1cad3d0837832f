#include "PictureLibrary.h"

#include <OpenImageIO/imageio.h>
#include <fmt/format.h>

namespace tool {

std::string pictureLibraryVersion() {
    const int version = OIIO::openimageio_version();  // two digits a part
    return fmt::format("{}.{}.{}", version / 10000, version / 100 % 100, version % 100);
}

}  // namespace tool
