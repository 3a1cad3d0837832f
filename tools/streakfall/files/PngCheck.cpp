#include "PngCheck.h"

#include <array>
#include <cstdint>
#include <fstream>
#include <string_view>

namespace tool {

namespace {

constexpr std::string_view kSignature("\x89PNG\r\n\x1a\n", 8);
constexpr std::uint32_t kLongestChunk = 0x7fffffff;

constexpr std::array<std::uint32_t, 256> makeCrcTable() {
    std::array<std::uint32_t, 256> table{};
    for (std::uint32_t i = 0; i < 256; ++i) {
        std::uint32_t c = i;
        for (int bit = 0; bit < 8; ++bit) c = (c & 1) != 0 ? 0xedb88320u ^ (c >> 1) : c >> 1;
        table[i] = c;
    }
    return table;
}

std::uint32_t crcOf(std::string_view bytes) {
    static constexpr auto kTable = makeCrcTable();
    std::uint32_t crc = 0xffffffffu;
    for (const char byte : bytes)
        crc = kTable[(crc ^ static_cast<unsigned char>(byte)) & 255] ^ (crc >> 8);
    return ~crc;
}

std::uint32_t bigEndian(std::string_view bytes) {
    std::uint32_t word = 0;
    for (int i = 0; i < 4; ++i)
        word = word << 8 | static_cast<unsigned char>(bytes[static_cast<std::size_t>(i)]);
    return word;
}

// False at the end of the file.
bool readBytes(std::istream& file, std::size_t count, std::string& bytes) {
    bytes.resize(count);
    return static_cast<bool>(file.read(bytes.data(), static_cast<std::streamsize>(count)));
}

}  // namespace

std::string pngTrouble(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::string bytes;
    if (!readBytes(file, kSignature.size(), bytes) || bytes != kSignature) return "";
    file.seekg(0, std::ios::end);
    const std::uint64_t size = static_cast<std::uint64_t>(file.tellg());
    file.seekg(static_cast<std::streamoff>(kSignature.size()));
    for (;;) {
        if (!readBytes(file, 4, bytes)) return "the file ends early";
        const std::uint32_t length = bigEndian(bytes);
        if (length > kLongestChunk || length > size) return "the file is damaged or ends early";
        if (!readBytes(file, 4 + std::size_t{length}, bytes)) return "the file ends early";
        const std::uint32_t crc = crcOf(bytes);
        const bool last = bytes.starts_with("IEND");
        if (!readBytes(file, 4, bytes)) return "the file ends early";
        if (bigEndian(bytes) != crc) return "the file is damaged";
        if (last) return "";
    }
}

}  // namespace tool
