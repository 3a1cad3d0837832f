// A digest of bytes, to tell whether two things are the same: 128 bits, the same on every machine
// and for any split into parts. Quick, and not made against people who want two things to look
// alike.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace tool {

class Digest {
  public:
    void add(std::span<const std::byte> bytes);
    void add(std::string_view text) { add(std::as_bytes(std::span(text))); }
    // 32 digits.
    [[nodiscard]] std::string hex() const;

  private:
    void mix(std::uint64_t word);

    std::uint64_t one_ = 0x9e3779b97f4a7c15ull;
    std::uint64_t two_ = 0xc2b2ae3d27d4eb4full;
    std::uint64_t length_ = 0;
    std::array<std::byte, 8> held_{};  // what does not fill a word yet: length_ modulo 8 bytes
};

}  // namespace tool
