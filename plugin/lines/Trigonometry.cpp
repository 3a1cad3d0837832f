#include "lines/Trigonometry.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <limits>

#include "lines/DoubleDouble.h"

namespace streakfall {
namespace {

// pi in three pieces. The first two have few enough bits that a product with a small integer is
// exact; together they have about 140.
constexpr double kPi1 = 0x1.921fb54442p+1;
constexpr double kPi2 = 0x1.a308d31318p-40;
constexpr double kPi3 = 0x1.8a2e03707344ap-80;
constexpr DoubleDouble kPi{0x1.921fb54442d18p+1, 0x1.1a62633145c07p-53};
constexpr DoubleDouble kHalfPi{kPi.high / 2, kPi.low / 2};

// Angles are taken from the nearest multiple of pi / 64, of which a turn has 128.
constexpr int kSteps = 128;
constexpr int kQuarter = kSteps / 4;
constexpr double kStepsPerRadian = 64.0 / 3.141592653589793;
constexpr double kLargestAngle = 256.0;

constexpr double kArcSteps = 64.0;  // arc tangents are taken from the nearest multiple of 1 / 64
constexpr double kNoticeable = 0x1p-60;  // below this ratio an angle equals its tangent

// x (1 - x^2 / (2 . 3) + x^4 / (2 . 3 . 4 . 5) - ...) from a first term x with k = 1, the cosine
// from a first term 1 with k = 0.
constexpr DoubleDouble turningSeries(DoubleDouble term, DoubleDouble square, int k) {
    DoubleDouble sum = term;
    for (int i = 0; i < 24; ++i, k += 2) {
        term = -(term * square) / DoubleDouble{static_cast<double>((k + 1) * (k + 2))};
        sum = sum + term;
    }
    return sum;
}

// Sines of the multiples of pi / 64 through a turn. 0 and 1 come out exactly, which the accuracy
// of small sines and cosines rests on.
constexpr std::array<DoubleDouble, kSteps> makeSines() {
    std::array<DoubleDouble, kSteps> sines{};
    for (int i = 0; i <= kQuarter; ++i) {
        const bool bySine = 2 * i <= kQuarter;
        const double steps = bySine ? i : kQuarter - i;
        const DoubleDouble angle = kPi * DoubleDouble{steps / 64.0};
        const DoubleDouble square = angle * angle;
        const DoubleDouble sine =
            bySine ? turningSeries(angle, square, 1) : turningSeries({1.0}, square, 0);
        sines[i] = sine;
        sines[(2 * kQuarter - i) % kSteps] = sine;
        sines[(2 * kQuarter + i) % kSteps] = -sine;
        sines[(4 * kQuarter - i) % kSteps] = -sine;
    }
    return sines;
}

constexpr std::array<DoubleDouble, kSteps> kSines = makeSines();

constexpr DoubleDouble smallArcSeries(DoubleDouble tangent) {
    const DoubleDouble square = tangent * tangent;
    DoubleDouble power = tangent, sum = tangent;
    for (int k = 3; k < 24; k += 2) {
        power = -(power * square);
        sum = sum + power / DoubleDouble{static_cast<double>(k)};
    }
    return sum;
}

// Arc tangents of i / 64, each from the one before: the angle between the two has the tangent
// 64 / (4096 + i (i + 1)).
constexpr std::array<DoubleDouble, 65> makeArcs() {
    std::array<DoubleDouble, 65> arcs{};
    for (int i = 0; i < 64; ++i) {
        const double denominator = 4096.0 + i * (i + 1);
        arcs[i + 1] = arcs[i] + smallArcSeries(DoubleDouble{64.0} / DoubleDouble{denominator});
    }
    return arcs;
}

constexpr std::array<DoubleDouble, 65> kArcs = makeArcs();

// angle - steps x pi / 64.
DoubleDouble remainderAngle(double angle, double steps) {
    const double factor = steps / 64.0;
    const DoubleDouble first = exactSum(angle, -(factor * kPi1));
    const DoubleDouble second = exactSum(first.high, -(factor * kPi2));
    return quickSum(second.high, second.low + first.low) + DoubleDouble{-(factor * kPi3)};
}

// The arc tangent of z, at most 1 / 128.
DoubleDouble smallArc(DoubleDouble z) {
    const double s = z.high * z.high;
    const double rest = z.high * s * (1.0 / 3 - s * (1.0 / 5 - s * (1.0 / 7 - s * (1.0 / 9))));
    return quickSum(z.high, z.low - rest);
}

// The angle whose tangent is small / big, 0 to pi / 4.
DoubleDouble firstOctant(double small, double big) {
    const double ratio = small / big;
    // Below the bound, or a zero vector's NaN.
    if (!(ratio >= kNoticeable)) return {big == 0.0 ? 0.0 : ratio};
    // Far from the ends of the exponent range; a power of two changes no bit.
    const double scale = big > 0x1p+400 ? 0x1p-500 : big < 0x1p-400 ? 0x1p+500 : 1.0;
    small *= scale;
    big *= scale;
    const int index = static_cast<int>(ratio * kArcSteps + 0.5);
    const double near = index / kArcSteps;
    const DoubleDouble z = (DoubleDouble{small} - exactProduct(near, big)) /
                           (DoubleDouble{big} + exactProduct(near, small));
    return kArcs[index] + smallArc(z);
}

}  // namespace

SineCosine sineCosine(double angle) {
    if (angle == 0.0) return {angle, 1.0};  // the sign of a zero stays
    if (!(std::fabs(angle) <= kLargestAngle)) {
        constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
        return {kNaN, kNaN};
    }
    const double steps = std::floor(angle * kStepsPerRadian + 0.5);
    const auto index = static_cast<std::uint32_t>(static_cast<std::int32_t>(steps));
    const DoubleDouble S = kSines[index % kSteps], C = kSines[(index + kQuarter) % kSteps];
    const DoubleDouble r = remainderAngle(angle, steps);

    // With s = sin r and v = 1 - cos r, both small:
    //   sin(angle) = S + C s - S v     cos(angle) = C - S s - C v
    // Behind r and r^2 / 2 the series need no more than a double.
    const DoubleDouble square = r * r;
    const double q = square.high;
    const double sRest = r.high * q * (1.0 / 6 - q * (1.0 / 120 - q * (1.0 / 5040 - q / 362880)));
    const double vRest = q * q * (1.0 / 24 - q * (1.0 / 720 - q * (1.0 / 40320 - q / 3628800)));
    const DoubleDouble s = quickSum(r.high, r.low - sRest);
    const DoubleDouble v = quickSum(q * 0.5, square.low * 0.5 - vRest);
    return {roundedSum(S, C * s, -(S * v)), roundedSum(C, -(S * s), -(C * v))};
}

double vectorAngle(double y, double x) {
    if (std::isnan(x) || std::isnan(y)) return x + y;
    if (std::isinf(x) || std::isinf(y)) {
        const auto towards = [](double v) { return std::copysign(std::isinf(v) ? 1.0 : 0.0, v); };
        return vectorAngle(towards(y), towards(x));
    }
    const double width = std::fabs(x), height = std::fabs(y);
    const bool steep = height > width;
    DoubleDouble angle = firstOctant(steep ? width : height, steep ? height : width);
    if (steep) angle = kHalfPi - angle;
    if (std::signbit(x)) angle = kPi - angle;
    return std::copysign(angle.high, y);
}

}  // namespace streakfall
