// How one channel's value goes from one white to another. A file's 16-bit white is 65535 and the
// host's is 32768, so a value that starts at the host comes back from the file unchanged, while
// two neighbouring values of a file may share one of the host's.
#pragma once

#include <cstdint>
#include <type_traits>

#include "hostapi/hostapi.h"

namespace tool {

inline constexpr std::uint32_t kWhite8 = 255;
inline constexpr std::uint32_t kHostWhite16 = 32768;
inline constexpr std::uint32_t kFileWhite16 = 65535;
inline constexpr std::uint32_t kFloatWhite = 1;

// The white of a file's samples of this type.
template <class Sample>
inline constexpr std::uint32_t kFileWhite = kFloatWhite;
template <>
inline constexpr std::uint32_t kFileWhite<std::uint8_t> = kWhite8;
template <>
inline constexpr std::uint32_t kFileWhite<std::uint16_t> = kFileWhite16;

// The white of the host's pixels of this type.
template <class Pixel>
inline constexpr std::uint32_t kHostWhite = kFloatWhite;
template <>
inline constexpr std::uint32_t kHostWhite<PF_Pixel> = kWhite8;
template <>
inline constexpr std::uint32_t kHostWhite<PF_Pixel16> = kHostWhite16;

// Rounded to the nearest. Whole numbers end within 0 to their white, NaN as 0; a float that
// becomes a float keeps what lies outside.
template <class To, class From>
[[nodiscard]] To rescaled(From value, std::uint32_t fromWhite, std::uint32_t toWhite) {
    if constexpr (std::is_floating_point_v<To> && std::is_floating_point_v<From>) {
        return static_cast<To>(value);
    } else if constexpr (std::is_floating_point_v<To>) {
        return static_cast<To>(static_cast<double>(value) / fromWhite);
    } else if constexpr (std::is_floating_point_v<From>) {
        if (!(value > 0)) return 0;
        if (value >= 1) return static_cast<To>(toWhite);
        return static_cast<To>(static_cast<double>(value) * toWhite + 0.5);
    } else {
        const std::uint64_t limited = value < fromWhite ? value : fromWhite;
        if (fromWhite == toWhite) return static_cast<To>(limited);
        return static_cast<To>((limited * toWhite + fromWhite / 2) / fromWhite);
    }
}

}  // namespace tool
