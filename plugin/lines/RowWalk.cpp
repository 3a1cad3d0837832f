#include "lines/RowWalk.h"

#include <algorithm>
#include <cmath>

namespace streakfall {
namespace {

// Sums that begin at x and do not pass this place have x's unit in the last place.
double lastOfBinade(double x) {
    int exponent = 0;
    std::frexp(x, &exponent);
    return x > 0.0 ? std::ldexp(1.0, exponent) : -std::ldexp(1.0, exponent - 1);
}

}  // namespace

void RowWalk::skipTo(double place) {
    while (more() && x < place) {
        const double second = x + pitch, third = second + pitch;
        const double rise = second - x;
        // Every further row lies here too, or is no number.
        if (!(rise > 0.0)) row = count;
        const double last = lastOfBinade(x);
        // Where the pitch ends on half a unit, an odd sum is rounded otherwise than the even ones
        // behind it: two equal rises show that it is over.
        double rows = 0.0;
        if (third <= last && third - second == rise) {
            rows = std::floor((std::min(place, last) - x) / rise) - 1.0;  // 1 for the quotient
        }
        if (rows >= 1.0) {
            const double left = static_cast<double>(count - row);
            rows = std::min(rows, left);
            x = x + rows * rise;  // exact: whole units within one binade
            row += static_cast<std::int64_t>(rows);
        } else if (more()) {
            next();
        }
    }
}

}  // namespace streakfall
