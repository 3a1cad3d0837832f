#pragma once

#include <cstdint>
#include <span>

namespace validate {

// A small generator whose numbers are the same everywhere, so that a seed tells a whole run.
class Random {
  public:
    explicit Random(std::uint64_t seed) : state_(seed) {}

    std::uint64_t bits() {
        std::uint64_t z = state_ += 0x9E3779B97F4A7C15ull;
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
        return z ^ (z >> 31);
    }
    // 0 to count - 1; count above 0.
    int below(int count) { return static_cast<int>(bits() % static_cast<std::uint64_t>(count)); }
    int between(int low, int high) { return low + below(high - low + 1); }  // both included
    double unit() { return static_cast<double>(bits() >> 11) * 0x1p-53; }
    double real(double low, double high) { return low + (high - low) * unit(); }
    bool oneIn(int count) { return below(count) == 0; }
    template <class T>
    const T& oneOf(std::span<const T> choices) {
        return choices[static_cast<std::size_t>(below(static_cast<int>(choices.size())))];
    }

  private:
    std::uint64_t state_;
};

}  // namespace validate
