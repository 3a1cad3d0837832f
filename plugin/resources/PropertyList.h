// The property list: the resource in which a host reads name, entry point, version and flags of an
// effect before it loads it. Made from the constants that global setup announces.
//
//   u16 1 | u32 0 | u32 count | property...
//   property: vendor | key | u32 0 | u32 length of the data with its padding | data
//
// Little-endian and unaligned. Four-letter words are numbers whose first letter is the highest
// byte, so they stand reversed. Data is padded with zero bytes to a multiple of 4.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "effect/Announcement.h"

namespace streakfall {

inline constexpr std::uint16_t kPropertyListId = 16000;  // of type "PIPL"
inline constexpr std::size_t kPropertyListSize = 294;    // bytes
inline constexpr std::string_view kEntryPointName = "EntryPointFunc";

// Appends to a list of exactly the size above; anything else does not compile.
class PropertyListBytes {
  public:
    constexpr void number(std::uint32_t value, int bytes) {
        for (int i = 0; i < bytes; ++i, value >>= 8) byte(static_cast<std::uint8_t>(value));
    }
    constexpr void fourLetters(std::string_view word) {
        for (std::size_t i = 4; i-- > 0;) byte(static_cast<std::uint8_t>(word[i]));
    }
    constexpr void padded(std::string_view text, std::size_t length) {
        for (std::size_t i = 0; i < length; ++i) {
            byte(i < text.size() ? static_cast<std::uint8_t>(text[i]) : 0);
        }
    }

    constexpr void property(std::string_view key, std::size_t length) {
        fourLetters("8BIM");
        fourLetters(key);
        number(0, 4);
        number(static_cast<std::uint32_t>(length), 4);
    }
    constexpr void numberProperty(std::string_view key, std::uint32_t value) {
        property(key, 4);
        number(value, 4);
    }
    // Zero-terminated.
    constexpr void textProperty(std::string_view key, std::string_view text) {
        const std::size_t length = (text.size() + 1 + 3) / 4 * 4;
        property(key, length);
        padded(text, length);
    }
    // With its length in front, as the host's names are.
    constexpr void nameProperty(std::string_view key, std::string_view name) {
        const std::size_t length = (1 + name.size() + 3) / 4 * 4;
        property(key, length);
        number(static_cast<std::uint32_t>(name.size()), 1);
        padded(name, length - 1);
    }

    constexpr bool isFull() const { return used_ == bytes_.size(); }
    constexpr const auto& bytes() const { return bytes_; }

  private:
    constexpr void byte(std::uint8_t value) { bytes_.at(used_++) = value; }

    std::array<std::uint8_t, kPropertyListSize> bytes_{};
    std::size_t used_ = 0;
};

consteval std::array<std::uint8_t, kPropertyListSize> propertyList() {
    constexpr std::uint32_t kPropertyCount = 12;
    PropertyListBytes list;
    list.number(1, 2);
    list.number(0, 4);
    list.number(kPropertyCount, 4);
    list.property("kind", 4);
    list.fourLetters("eFKT");
    list.nameProperty("name", kProductName);
    list.nameProperty("catg", "QUVEX");
    list.textProperty("8664", kEntryPointName);
    list.numberProperty("ePVR", 2);   // form of this list: 2.0
    list.numberProperty("eSVR", 13);  // the host's interface: 13.0
    list.numberProperty("eVER", kPackedVersion);
    list.property("eINF", 2);  // the one whose length leaves the padding out
    list.number(0, 4);
    list.numberProperty("eGLO", static_cast<std::uint32_t>(kOutFlags));
    list.numberProperty("eGL2", static_cast<std::uint32_t>(kOutFlags2));
    list.nameProperty("eMNA", "QUVEX STREAK FALL");  // the name that projects store
    list.numberProperty("aeFL", 0);
    if (!list.isFull()) throw "the list is shorter than its size";
    return list.bytes();
}

}  // namespace streakfall
