// The library that reads and writes pictures.
#pragma once

#include <string>

namespace tool {

// "2.4.7", of the library that was loaded.
[[nodiscard]] std::string pictureLibraryVersion();

}  // namespace tool
