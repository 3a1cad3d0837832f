// The slots of one row, prepared for all rows that look alike.
//
// Rows of one pattern have the same random make-up, and only their place along the axis differs.
// So a slot is drawn from the stream once, together with the range of row places from which its
// line touches the frame; going up the rows, a pattern keeps the slots whose range is open.
#pragma once

#include <cstdint>
#include <limits>
#include <vector>

#include "lines/LinePrototype.h"

namespace streakfall {

// The places of a row, along the axis, from which a slot's line can touch the frame.
struct AxialRange {
    double from, to;
};

struct RowSlot {
    LinePrototype prototype;
    double y;  // lateral: pixels, or radians in a fan
    AxialRange range;
    std::int32_t seed;
};

class RowPattern {
  public:
    // In drawing order.
    void add(const RowSlot& slot) { slots.push_back(slot); }
    // Once, after the last slot and before the first question.
    void sort();

    // Calls visit(slot) for the slots open at x, in drawing order; returns how many there are.
    // From call to call x never falls.
    template <class Visit>
    std::int64_t visitAt(double x, Visit visit) {
        if (next < byFrom.size() && slots[byFrom[next]].range.from <= x) open(x);
        std::size_t kept = 0;
        for (const std::uint32_t index : opened) {
            const RowSlot& slot = slots[index];
            if (slot.range.to < x) continue;
            opened[kept++] = index;
            visit(slot);
        }
        opened.resize(kept);
        return static_cast<std::int64_t>(kept);
    }

    // Where the next slot opens.
    double nextPlace() const {
        return next < byFrom.size() ? slots[byFrom[next]].range.from
                                    : std::numeric_limits<double>::infinity();
    }

    // How many lines there are at most when `rows` rows of this pattern come, one every `cycle`
    // pixels.
    double linesAtMost(double cycle, double rows) const;

  private:
    void open(double x);

    std::vector<RowSlot> slots;
    std::vector<std::uint32_t> byFrom;  // indexes of slots, by the place where they open
    std::size_t next = 0;               // in byFrom
    std::vector<std::uint32_t> opened;  // in drawing order
};

}  // namespace streakfall
