#include "StoredLook.h"

#include <OpenImageIO/imageio.h>

#include "Failure.h"

namespace tool {

std::string storedLook(const std::string& path) {
    const auto input = OIIO::ImageInput::open(path);
    if (!input) {
        (void)OIIO::geterror();
        fail(Exit::kInput, "cannot read {}: no picture", path);
    }
    const OIIO::ImageSpec& spec = input->spec();
    const std::string own(spec.get_string_attribute("streakfall:look"));
    // TIFF has no names of one's own: there the description holds it.
    const bool ours = std::string_view(spec.get_string_attribute("Software")).starts_with("streak");
    return own.empty() && ours ? std::string(spec.get_string_attribute("ImageDescription")) : own;
}

}  // namespace tool
