// RowsInside: the columns of all rows of a large dab that lie inside its circle.
//
// Owner: who paints dabs one after the other; 33 KiB. RowEndsAvx2 fills it in and reads it.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "shareForLines/LargeDabShape.h"

namespace streakfall {

struct RowsInside {
    static constexpr std::int32_t kMargin = 5;        // rows above the dab, and more below
    static constexpr std::int32_t kBeyond = 1 << 28;  // from +, to -: the row has no column inside

    std::int32_t first = 0;  // dab row of the first entry
    // Columns of the buffer, both ends included.
    std::array<std::int32_t, 2 * static_cast<std::size_t>(LargeDabShape::kMaxRadius) + 40> from, to;

    std::size_t index(std::int32_t dabY) const { return static_cast<std::size_t>(dabY - first); }
};

}  // namespace streakfall
