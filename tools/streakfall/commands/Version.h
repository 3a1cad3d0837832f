#pragma once

#include <string>

namespace tool {

// What -V prints: the program's version and commit, what the drawing will use of the processor,
// the picture library's version, and where the effect's module is.
[[nodiscard]] std::string versionText();

}  // namespace tool
