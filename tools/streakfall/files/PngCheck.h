// Whether a PNG file is whole: its chunks follow one another with right checksums up to the end
// mark. Asked before the file is decoded, because the library that decodes writes a complaint of
// its own on standard error, where the program owes its user one clear line.
#pragma once

#include <string>

namespace tool {

// What is wrong with the file, in words; empty when it is whole, or no PNG at all.
[[nodiscard]] std::string pngTrouble(const std::string& path);

}  // namespace tool
