#include "Digest.h"

#include <fmt/format.h>

#include <algorithm>
#include <bit>
#include <cstring>

namespace tool {

namespace {

// A finaliser that lets each bit of the word change every other: shifts and odd factors in turn.
std::uint64_t stirred(std::uint64_t word) {
    word = (word ^ word >> 30) * 0xbf58476d1ce4e5b9ull;
    word = (word ^ word >> 27) * 0x94d049bb133111ebull;
    return word ^ word >> 31;
}

std::uint64_t wordAt(const std::byte* bytes) {
    std::uint64_t word;
    std::memcpy(&word, bytes, sizeof word);
    return word;  // little-endian on all machines that the module is made for
}

}  // namespace

void Digest::mix(std::uint64_t word) {
    one_ = std::rotl((one_ ^ word) * 0xff51afd7ed558ccdull, 29) + two_;
    two_ = std::rotl((two_ + word) * 0xc4ceb9fe1a85ec53ull, 33) ^ one_;
}

void Digest::add(std::span<const std::byte> bytes) {
    while (!bytes.empty()) {
        const std::size_t held = length_ % 8;
        if (held == 0 && bytes.size() >= 8) {
            const std::size_t whole = bytes.size() / 8 * 8;
            for (std::size_t i = 0; i < whole; i += 8) mix(wordAt(bytes.data() + i));
            length_ += whole;
            bytes = bytes.subspan(whole);
            continue;
        }
        const std::size_t count = std::min(8 - held, bytes.size());
        std::memcpy(held_.data() + held, bytes.data(), count);
        length_ += count;
        bytes = bytes.subspan(count);
        if (length_ % 8 == 0) mix(wordAt(held_.data()));
    }
}

std::string Digest::hex() const {
    Digest last = *this;
    std::fill(last.held_.begin() + static_cast<std::ptrdiff_t>(length_ % 8), last.held_.end(),
              std::byte{0});
    last.mix(wordAt(last.held_.data()));
    last.mix(length_);
    return fmt::format("{:016x}{:016x}", stirred(last.one_), stirred(last.two_ ^ last.one_));
}

}  // namespace tool
