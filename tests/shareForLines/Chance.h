// Random choices of the tests, the same on every machine for the same seed.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iterator>
#include <random>

namespace streakfall {

class Chance {
  public:
    explicit Chance(std::uint32_t seed) : random(seed) {}
    bool oneIn(int n) { return below(n) == 0; }
    int below(int n) { return std::uniform_int_distribution<int>(0, n - 1)(random); }
    double between(double low, double high) {
        return std::uniform_real_distribution<double>(low, high)(random);
    }
    template <std::size_t N>
    double oneOf(const double (&values)[N]) {
        return values[below(static_cast<int>(N))];
    }

  private:
    std::mt19937 random;
};

// Of which, in float, 255 parts in 255 are more than the whole.
inline constexpr double kRisingOpacity = 0.0467;

// Pixels, mostly such as a person dials, with the places where the ways of painting change.
inline double randomThickness(Chance& chance) {
    switch (chance.below(7)) {
        case 0:
            return chance.between(0.02, 3.0);  // radius about 1 and below
        case 1:
            return chance.between(8.0, 12.0);  // about 5, where large dabs begin
        case 2:
            return chance.between(20.0, 24.0);  // about 11, where the table ends
        case 3:
            return chance.oneOf({2.0, 4.0, 10.0, 22.0, 40.0});
        case 4:
            return chance.oneIn(20) ? chance.between(160.0, 4096.0) : chance.between(24.0, 160.0);
        default:
            return chance.between(0.5, 12.0);
    }
}

inline double randomOpacity(Chance& chance) {
    if (chance.oneIn(2)) return 1.0;
    if (chance.oneIn(4)) return chance.between(0.0, 1.0);
    return chance.oneOf({0.5, 0.996, 0.1, 0.004, kRisingOpacity});
}

// The random cases that a test runs: a seed each. STREAKFALL_STRESS_SEED and
// STREAKFALL_STRESS_COUNT stand in for the first of them and their number.
struct Seeds {
    Seeds(std::uint32_t usualFirst, std::uint32_t usualCount)
        : first(number("STREAKFALL_STRESS_SEED", usualFirst)),
          end(first + number("STREAKFALL_STRESS_COUNT", usualCount)) {}

    std::uint32_t first, end;

  private:
    static std::uint32_t number(const char* name, std::uint32_t usual) {
        const char* text = std::getenv(name);
        return text != nullptr ? static_cast<std::uint32_t>(std::strtoul(text, nullptr, 10))
                               : usual;
    }
};

}  // namespace streakfall
