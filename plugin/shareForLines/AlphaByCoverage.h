#pragma once

#include <array>
#include <cstdint>

namespace streakfall {

// The pen's alpha at each coverage; the last entry is the pen's own, that of a dab's interior.
template <class Depth>
struct AlphaByCoverage : std::array<typename Depth::Channel, 257> {
    static constexpr std::int32_t kInterior = 256;

    typename Depth::Channel of{};  // the pen's alpha that the table is for

    void set(typename Depth::Channel alpha) {
        if (alpha == of) return;
        for (std::int32_t g = 0; g < kInterior; ++g) {
            (*this)[static_cast<std::size_t>(g)] = Depth::coverAlpha(alpha, g);
        }
        (*this)[kInterior] = of = alpha;
    }
};

}  // namespace streakfall
