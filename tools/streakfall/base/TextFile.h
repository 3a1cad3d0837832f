#pragma once

#include <string>
#include <string_view>

namespace tool {

// The whole of a text file, "-" for standard input, at most 16 MiB. Throws Failure (input) that
// names the option and the file.
[[nodiscard]] std::string readTextFile(std::string_view option, const std::string& path);

}  // namespace tool
