#include "lines/RowPattern.h"

#include <algorithm>
#include <numeric>

namespace streakfall {

void RowPattern::sort() {
    byFrom.resize(slots.size());
    std::iota(byFrom.begin(), byFrom.end(), 0u);
    std::sort(byFrom.begin(), byFrom.end(), [this](std::uint32_t a, std::uint32_t b) {
        return slots[a].range.from < slots[b].range.from;
    });
}

void RowPattern::open(double x) {
    const auto before = static_cast<std::ptrdiff_t>(opened.size());
    while (next < byFrom.size() && slots[byFrom[next]].range.from <= x) {
        opened.push_back(byFrom[next++]);
    }
    std::sort(opened.begin() + before, opened.end());
    std::inplace_merge(opened.begin(), opened.begin() + before, opened.end());
}

double RowPattern::linesAtMost(double cycle, double rows) const {
    double lines = 0.0;
    for (const RowSlot& slot : slots) {
        lines += std::min(rows, (slot.range.to - slot.range.from) / cycle + 1.0);
    }
    return lines;
}

}  // namespace streakfall
