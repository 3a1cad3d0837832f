#pragma once

#include <string>

namespace tool {

// The look that a rendered picture carries, in words: "Thickness=6; Color=#e8f1ff". Empty when it
// carries none. Throws Failure (input) for what is no picture.
[[nodiscard]] std::string storedLook(const std::string& path);

}  // namespace tool
