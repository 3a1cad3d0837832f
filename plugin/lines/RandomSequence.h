// The one random generator: a 32-bit linear congruential step over a plain state word.
//
// A stream is a word held by its owner and stepped in place. The order of draws is part of the
// picture: a draw whose value is not used is still made.
#pragma once

#include <cstdint>

namespace streakfall {

inline constexpr std::uint32_t seedInitial = 505908858u;

constexpr std::uint32_t lcgStep(std::uint32_t state) { return state * 214013u + 2531011u; }

// Output word of a state just stepped to: 0 to 65535, all 16 bits kept.
constexpr std::uint32_t lcgWord(std::uint32_t state) { return state >> 16; }

// The double nearest 1/65535, so that the word 65535 gives exactly 1.0. It is not 2^-16, which
// turns 16.16 fixed-point numbers into pixels.
inline constexpr double kUnitPerWord = 1.5259021896696422e-05;

// 0.0 to 1.0, both ends included.
inline double drawUnit(std::uint32_t& state) {
    state = lcgStep(state);
    return static_cast<double>(lcgWord(state)) * kUnitPerWord;
}

// -1.0 to 1.0, both ends included, from one step. The grouping is part of the value.
inline double drawSigned(std::uint32_t& state) {
    const double u = drawUnit(state);
    return (u - 1.0) + u;
}

// Two steps without a draw: how every stream is started from its seed word.
constexpr std::uint32_t startStream(std::uint32_t seed) { return lcgStep(lcgStep(seed)); }

}  // namespace streakfall
