#include "Compressions.h"

#include <set>

namespace tool {

std::vector<Compression> compressionsOf(const std::string& format) {
    if (format == "png") return {{"zip", 0, 9}, {"none", 0, 0}};
    if (format == "tiff") return {{"none", 0, 0}, {"lzw", 0, 0}, {"zip", 1, 9}, {"packbits", 0, 0}};
    if (format == "openexr")
        return {{"none", 0, 0},  {"rle", 0, 0}, {"zip", 0, 0},  {"zips", 0, 0},   {"piz", 0, 0},
                {"pxr24", 0, 0}, {"b44", 0, 0}, {"b44a", 0, 0}, {"dwaa", 1, 500}, {"dwab", 1, 500}};
    return {};
}

std::vector<std::string> compressionNames() {
    std::set<std::string> names;
    for (const char* format : {"png", "tiff", "openexr"})
        for (const Compression& one : compressionsOf(format)) names.insert(one.name);
    return {names.begin(), names.end()};
}

}  // namespace tool
