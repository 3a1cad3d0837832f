#include "shareForLines/path/ColorJitter.h"

#include <algorithm>
#include <cmath>

#include "lines/Convert.h"
#include "lines/RandomSequence.h"

namespace streakfall {
namespace {

// A sixth of a turn, of 15 decimals: the full-precision quotient gives other last bits.
constexpr double kSixth = 0.166666666666667;

double reflectUnit(double v) {
    double m = std::fabs(v);
    m = m - truncToI32(m / 2.0) * 2.0;
    return m > 1.0 ? 2.0 - m : m;
}

double wrapHue(double n) {
    const double i = std::fabs(static_cast<double>(truncToI32(n)));
    return n >= 0.0 ? n - i : i + (n + 1.0);
}

template <class Depth>
Hsv toHsv(const typename Depth::Pixel& pen) {
    const double r = pen.red * Depth::kColorScale;
    const double g = pen.green * Depth::kColorScale;
    const double b = pen.blue * Depth::kColorScale;
    const double v = std::max({r, g, b});
    if (v == 0.0) return {0.0, 0.0, v};
    const double delta = v - std::min({r, g, b});
    const double s = delta / v;
    if (s == 0.0) return {0.0, 0.0, v};
    // A tie goes to the earlier case.
    double h;
    if (v == r) {
        h = Depth::difference(pen.green, pen.blue) / delta;
    } else if (v == g) {
        h = 2.0 + Depth::difference(pen.blue, pen.red) / delta;
    } else {
        h = Depth::difference(pen.red, pen.green) / delta + 4.0;
    }
    h = h * kSixth;
    return {h < 0.0 ? h + 1.0 : h, s, v};
}

}  // namespace

Hsv drawJitter(const JitterAmounts& amounts, std::uint32_t lineSeed, std::int32_t randomSeed) {
    std::uint32_t stream = startStream(lineSeed);
    if (randomSeed != 0) {
        const std::uint32_t word = lcgWord(lcgStep(stream));
        stream = startStream(word * 5779u);
    }
    Hsv shift;
    shift.h = amounts.hue * drawSigned(stream);
    shift.s = amounts.saturation * drawSigned(stream);
    shift.v = amounts.value * drawSigned(stream);
    return shift;
}

Rgb shiftColor(const Hsv& color, const Hsv& shift) {
    const double hue = wrapHue(color.h + shift.h);
    const double s = reflectUnit(shift.s + color.s);
    const double v = reflectUnit(shift.v + color.v);
    const double h = (hue - truncToI32(hue)) * 6.0;
    const std::int32_t sector = truncToI32(h);
    const double f = h - sector;
    const double p = (1.0 - s) * v;
    const double q = (1.0 - s * f) * v;
    const double t = (1.0 - s * (1.0 - f)) * v;
    switch (sector) {
        case 0:
            return {v, t, p};
        case 1:
            return {q, v, p};
        case 2:
            return {p, v, t};
        case 3:
            return {p, q, v};
        case 4:
            return {t, p, v};
        default:
            return {v, p, q};
    }
}

template <class Depth>
void jitterColor(typename Depth::Pixel& out, const typename Depth::Pixel& base,
                 const JitterAmounts& amounts, std::uint32_t lineSeed, std::int32_t randomSeed) {
    const Rgb rgb = shiftColor(toHsv<Depth>(base), drawJitter(amounts, lineSeed, randomSeed));
    out.alpha = base.alpha;
    out.red = Depth::fromUnit(rgb.r);
    out.green = Depth::fromUnit(rgb.g);
    out.blue = Depth::fromUnit(rgb.b);
}

template void jitterColor<Depth8>(PF_Pixel&, const PF_Pixel&, const JitterAmounts&, std::uint32_t,
                                  std::int32_t);
template void jitterColor<Depth16>(PF_Pixel16&, const PF_Pixel16&, const JitterAmounts&,
                                   std::uint32_t, std::int32_t);
template void jitterColor<DepthFloat>(PF_PixelFloat&, const PF_PixelFloat&, const JitterAmounts&,
                                      std::uint32_t, std::int32_t);

}  // namespace streakfall
