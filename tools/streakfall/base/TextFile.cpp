#include "TextFile.h"

#include <fstream>

#include "Failure.h"

namespace tool {

std::string readTextFile(std::string_view option, const std::string& path) {
    constexpr std::size_t kLongest = 16u << 20;
    std::ifstream file(path == "-" ? "/dev/stdin" : path, std::ios::binary);
    if (!file) fail(Exit::kInput, "{}: cannot read {}", option, path);
    std::string text(kLongest + 1, '\0');
    file.read(text.data(), static_cast<std::streamsize>(text.size()));
    if (file.bad()) fail(Exit::kInput, "{}: cannot read {}", option, path);
    text.resize(static_cast<std::size_t>(file.gcount()));
    if (text.size() > kLongest)
        fail(Exit::kInput, "{}: {} is longer than {} bytes", option, path, kLongest);
    return text;
}

}  // namespace tool
