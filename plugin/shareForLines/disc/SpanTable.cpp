#include "shareForLines/disc/SpanTable.h"

#include <algorithm>
#include <cmath>

#include "lines/Convert.h"

namespace streakfall {

void resetSpans(SpanTable& spans, double r, double cx, double cy) {
    spans.centreColumn = truncToI32(cx);
    // Five rows of margin on each side: edge pixels stay within r + 1 of the centre.
    spans.firstRow = truncToI32(std::floor((cy - r) + 0.5)) - 5;
    spans.rowCount = 2 * truncToI32(r + 5.0);
    if (spans.rowCount > spans.capacity) {
        spans.left.resize(static_cast<std::size_t>(spans.rowCount));
        spans.right.resize(static_cast<std::size_t>(spans.rowCount));
        spans.capacity = spans.rowCount;
    }
    std::fill_n(spans.left.begin(), spans.rowCount, SpanTable::kNoLeft);
    std::fill_n(spans.right.begin(), spans.rowCount, SpanTable::kNoRight);
}

}  // namespace streakfall
