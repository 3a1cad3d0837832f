#include "StoredLook.h"

#include <OpenImageIO/imageio.h>

#include "Failure.h"
#include "Metadata.h"

namespace tool {

std::string storedLook(const std::string& path) {
    const auto input = OIIO::ImageInput::open(path);
    if (!input) {
        (void)OIIO::geterror();
        fail(Exit::kInput, "cannot read {}: no picture", path);
    }
    return stampedLook(input->spec());
}

}  // namespace tool
