// Random numbers of the benchmarks' scenes: the same on every machine.
#pragma once

#include <cstdint>

namespace bench {

// xorshift, top 24 bits used.
class Random32 {
  public:
    explicit Random32(std::uint32_t seed) : state(seed) {}
    double between(double low, double high) { return low + (high - low) * unit(); }
    double unit() {
        state ^= state << 13;
        state ^= state >> 17;
        state ^= state << 5;
        return (state >> 8) / 16777216.0;
    }

  private:
    std::uint32_t state;
};

}  // namespace bench
