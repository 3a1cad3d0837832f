// SpanTable: the interior limits of the large dab being drawn, an entry a row of the dab.
//
// Columns and rows are dab coordinates: integers relative to the pixel that holds the centre.
// The storage only grows and is used again by the next dab. Owner: the LineCanvas; one dab at a
// time.
#pragma once

#include <cstdint>
#include <vector>

namespace streakfall {

struct SpanTable {
    // Nothing recorded on that side of the row.
    static constexpr std::int32_t kNoLeft = INT32_MIN;
    static constexpr std::int32_t kNoRight = INT32_MAX;

    std::vector<std::int32_t> left;   // leftmost interior column of a row
    std::vector<std::int32_t> right;  // rightmost interior column
    std::int32_t capacity = 0;        // rows available
    std::int32_t rowCount = 0;        // rows in use
    std::int32_t firstRow = 0;        // dab row of entry 0
    std::int32_t centreColumn = 0;    // last column of the left half
};

// Prepares the table for a dab of radius r about (cx, cy), dab coordinates. May throw when the
// arrays cannot grow.
void resetSpans(SpanTable& spans, double r, double cx, double cy);

// Keeps the interior one pixel inside the edge pixel (x, y).
inline void recordSpan(SpanTable& spans, std::int32_t x, std::int32_t y) {
    const auto row = static_cast<std::size_t>(y - spans.firstRow);
    if (x <= spans.centreColumn) {
        if (x + 1 > spans.left[row]) spans.left[row] = x + 1;
    } else {
        if (x - 1 < spans.right[row]) spans.right[row] = x - 1;
    }
}

}  // namespace streakfall
