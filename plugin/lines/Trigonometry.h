// Sine, cosine and the angle of a vector, with the same bits on every system.
//
// The libraries of the systems differ in last bits, some of them from one processor to the next,
// and a last bit can move a line's pixel. These are computed to some 66 bits and rounded once, by
// additions and multiplications in a fixed order, so that all but one result in thousands
// is the double nearest to the true value. Pure functions, safe from any thread.
#pragma once

namespace streakfall {

struct SineCosine {
    double sine;
    double cosine;
};

// Radians within -256 to 256; the product turns by one turn at most. NaN for anything else.
SineCosine sineCosine(double angle);

// The angle of the vector (x, y) in radians, -pi to pi; signs of zeros, infinities and NaN count
// as in the library's atan2.
double vectorAngle(double y, double x);

}  // namespace streakfall
