// A number as the unevaluated sum of two doubles, the second at most half a unit in the last place
// of the first: some 106 bits. Usable in constant expressions. No multiply-add is used or wanted:
// each error term is that of the rounded operation before it.
//
// Arguments stay far from the ends of the exponent range, where the error terms are inexact.
#pragma once

namespace streakfall {

struct DoubleDouble {
    double high = 0.0;
    double low = 0.0;
};

// a + b, exactly; |a| >= |b| or a = 0.
constexpr DoubleDouble quickSum(double a, double b) {
    const double sum = a + b;
    return {sum, b - (sum - a)};
}

// a + b, exactly.
constexpr DoubleDouble exactSum(double a, double b) {
    const double sum = a + b;
    const double partOfB = sum - a;
    return {sum, (a - (sum - partOfB)) + (b - partOfB)};
}

// a x b, exactly: both are split into halves whose products fit into a double.
constexpr DoubleDouble exactProduct(double a, double b) {
    constexpr double kSplitter = 134217729.0;  // 2^27 + 1
    const double product = a * b;
    const double shiftedA = kSplitter * a, shiftedB = kSplitter * b;
    const double highA = shiftedA - (shiftedA - a), highB = shiftedB - (shiftedB - b);
    const double lowA = a - highA, lowB = b - highB;
    return {product, ((highA * highB - product) + highA * lowB + lowA * highB) + lowA * lowB};
}

constexpr DoubleDouble operator-(DoubleDouble a) { return {-a.high, -a.low}; }

constexpr DoubleDouble operator+(DoubleDouble a, DoubleDouble b) {
    const DoubleDouble high = exactSum(a.high, b.high);
    const DoubleDouble low = exactSum(a.low, b.low);
    const DoubleDouble sum = quickSum(high.high, high.low + low.high);
    return quickSum(sum.high, sum.low + low.low);
}

constexpr DoubleDouble operator-(DoubleDouble a, DoubleDouble b) { return a + -b; }

constexpr DoubleDouble operator*(DoubleDouble a, DoubleDouble b) {
    const DoubleDouble product = exactProduct(a.high, b.high);
    return quickSum(product.high, product.low + (a.high * b.low + a.low * b.high));
}

constexpr DoubleDouble operator/(DoubleDouble a, DoubleDouble b) {
    const double first = a.high / b.high;
    const DoubleDouble rest = a - b * DoubleDouble{first};
    return quickSum(first, rest.high / b.high);
}

// The double next to a + b + c, but for errors far below its last bit; b and c may cancel.
constexpr double roundedSum(DoubleDouble a, DoubleDouble b, DoubleDouble c) {
    const DoubleDouble small = exactSum(b.high, c.high);
    const DoubleDouble all = exactSum(a.high, small.high);
    return all.high + (all.low + (small.low + a.low + (b.low + c.low)));
}

}  // namespace streakfall
