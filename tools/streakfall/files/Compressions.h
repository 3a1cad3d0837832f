// The compressions that a format's files may have.
#pragma once

#include <string>
#include <vector>

namespace tool {

// One of a format's, and its levels if it has any.
struct Compression {
    const char* name;
    int least, most;  // 0, 0: no levels
};

// Of "png", "tiff" or "openexr"; none for a format that packs nothing.
[[nodiscard]] std::vector<Compression> compressionsOf(const std::string& format);

// Those of all formats, each once.
[[nodiscard]] std::vector<std::string> compressionNames();

}  // namespace tool
