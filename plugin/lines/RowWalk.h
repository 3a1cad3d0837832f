// The places of the rows along the axis: the first one, and the pitch added again and again.
//
// Each sum is rounded, and the roundings are part of the picture, so a row's place is not a
// product. Between two powers of two, though, every sum is rounded alike, and any number of rows
// can be passed over at once.
#pragma once

#include <cstdint>

namespace streakfall {

class RowWalk {
  public:
    // pitch above 0, pixels; count is how many rows there are.
    RowWalk(double firstX, double rowPitch, std::int64_t rowCount)
        : x(firstX), pitch(rowPitch), count(rowCount) {}

    bool more() const { return row < count; }
    void next() {
        x = x + pitch;
        ++row;
    }
    // Goes to the first row whose place is not below `place`, or to the end.
    void skipTo(double place);

    double x;
    std::int64_t row = 0;

  private:
    double pitch;
    std::int64_t count;
};

}  // namespace streakfall
