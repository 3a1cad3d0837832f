#include "host/Transfer.h"

#include <algorithm>
#include <cstring>

namespace standin {
namespace {

using U64 = std::uint64_t;

// numerator / denominator, halves up.
U64 nearest(U64 numerator, U64 denominator) { return (numerator + denominator / 2) / denominator; }

// Exact for 0 to 65025 / 255, halves cannot occur.
A_u_char dividedBy255(unsigned value) {
    value += 128;
    return static_cast<A_u_char>((value + (value >> 8)) >> 8);
}

// Each depth lays one pixel whose source alpha and mask are not 0.

struct Lay8 {
    using Pixel = PF_Pixel;
    using Ratio = unsigned;
    static constexpr Ratio kWhite = PF_MAX_CHAN8;
    static Ratio opacity(const TransferJob& job) { return job.opacity; }

    static void lay(const PF_Pixel& s, Ratio mask, Ratio opacity, PF_Pixel& d) {
        if (mask == kWhite && opacity == kWhite && d.alpha == kWhite) {
            layOverOpaque(s, d);
        } else {
            layAny(s, mask, opacity, d);
        }
    }

    static void layOverOpaque(const PF_Pixel& s, PF_Pixel& d) {
        const unsigned a = s.alpha;
        const unsigned rest = kWhite - a;
        d.alpha = kWhite;
        d.red = dividedBy255(s.red * a + d.red * rest);
        d.green = dividedBy255(s.green * a + d.green * rest);
        d.blue = dividedBy255(s.blue * a + d.blue * rest);
    }

    // a is `part` of kAll; alpha is `sum` of kAll * 255.
    static void layAny(const PF_Pixel& s, Ratio mask, Ratio opacity, PF_Pixel& d) {
        constexpr U64 kAll = U64{255} * 255 * 255;
        const U64 part = U64{s.alpha} * mask * opacity;
        const U64 front = part * 255;
        const U64 back = d.alpha * (kAll - part);
        const U64 sum = front + back;
        const auto mix = [&](A_u_char sc, A_u_char dc) {
            return static_cast<A_u_char>(nearest(sc * front + dc * back, sum));
        };
        d = {static_cast<A_u_char>(nearest(sum, kAll)), mix(s.red, d.red), mix(s.green, d.green),
             mix(s.blue, d.blue)};
    }
};

struct Lay16 {
    using Pixel = PF_Pixel16;
    using Ratio = unsigned;
    static constexpr Ratio kWhite = PF_MAX_CHAN16;
    static Ratio opacity(const TransferJob& job) { return job.opacitySu; }

    static void lay(const PF_Pixel16& s, Ratio mask, Ratio opacity, PF_Pixel16& d) {
        if (opacity == kWhite) {
            layOpaquely(s, std::min(mask, kWhite), d);
        } else {
            layFaintly(s, mask, opacity, d);
        }
    }

    // a is `part` of 2^30; alpha is `sum` of 2^45. A colour times 2^45 fits 64 bits.
    static void layOpaquely(const PF_Pixel16& s, Ratio mask, PF_Pixel16& d) {
        constexpr U64 kAll = U64{1} << 30;
        const U64 part = U64{std::min<Ratio>(s.alpha, kWhite)} * mask;
        const U64 front = part << 15;
        const U64 back = d.alpha * (kAll - part);
        const U64 sum = front + back;
        const bool opaque = sum == U64{1} << 45;
        const auto mix = [&](A_u_short sc, A_u_short dc) {
            const U64 colour = sc * front + dc * back;
            return static_cast<A_u_short>(opaque ? (colour + (U64{1} << 44)) >> 45
                                                 : nearest(colour, sum));
        };
        d = {static_cast<A_u_short>((sum + kAll / 2) >> 30), mix(s.red, d.red),
             mix(s.green, d.green), mix(s.blue, d.blue)};
    }

    // Three factors and a colour do not fit 64 bits; doubles round alike but for ties closer than
    // they can tell.
    static void layFaintly(const PF_Pixel16& s, Ratio mask, Ratio opacity, PF_Pixel16& d) {
        const double white = kWhite;
        const double a = s.alpha / white * (mask / white) * (opacity / white);
        const double front = a * white;
        const double back = d.alpha * (1 - a);
        const double sum = front + back;
        const auto mix = [&](A_u_short sc, A_u_short dc) {
            return static_cast<A_u_short>((sc * front + dc * back) / sum + 0.5);
        };
        d = {static_cast<A_u_short>(sum + 0.5), mix(s.red, d.red), mix(s.green, d.green),
             mix(s.blue, d.blue)};
    }
};

struct LayFloat {
    using Pixel = PF_PixelFloat;
    using Ratio = double;
    static constexpr Ratio kWhite = 1;
    static Ratio opacity(const TransferJob& job) {
        return job.opacitySu / static_cast<double>(PF_MAX_OPACITY16);
    }

    static void lay(const PF_PixelFloat& s, Ratio mask, Ratio opacity, PF_PixelFloat& d) {
        const double a = double{s.alpha} * std::min(mask, 1.0) * opacity;
        const double back = double{d.alpha} * (1 - a);
        const double sum = a + back;
        const auto mix = [&](float sc, float dc) {
            return static_cast<float>((double{sc} * a + double{dc} * back) / sum);
        };
        d = {static_cast<float>(sum), mix(s.red, d.red), mix(s.green, d.green),
             mix(s.blue, d.blue)};
    }
};

template <class Pixel>
Pixel* pixelAt(const PF_EffectWorld& world, A_long x, A_long y) {
    auto* bytes = reinterpret_cast<std::byte*>(world.data);
    return reinterpret_cast<Pixel*>(bytes + static_cast<std::ptrdiff_t>(y) * world.rowbytes) + x;
}

// Most of a line buffer is transparent, so that is passed over several pixels at a time.
const PF_Pixel* firstVisible(const PF_Pixel* pixel, const PF_Pixel* end) {
    if (pixel != end && pixel->alpha != 0) {
        return pixel;
    }
    constexpr U64 kAlphas = 0x000000FF000000FFull;  // alpha is the lowest byte of a pixel
    for (; end - pixel >= 8; pixel += 8) {
        U64 pair[4];
        std::memcpy(pair, pixel, sizeof pair);
        if ((pair[0] | pair[1] | pair[2] | pair[3]) & kAlphas) {
            break;
        }
    }
    while (pixel != end && pixel->alpha == 0) {
        ++pixel;
    }
    return pixel;
}

template <class Pixel>
const Pixel* firstVisible(const Pixel* pixel, const Pixel* end) {
    while (pixel != end && pixel->alpha == 0) {
        ++pixel;
    }
    return pixel;
}

// The part of a row where source, destination and mask all have pixels.
struct Span {
    A_long left, right;  // in source pixels, right excluded
};

template <class Lay>
void layRow(const TransferJob& job, A_long y, Span span) {
    using Pixel = typename Lay::Pixel;
    const Pixel* const origin = pixelAt<Pixel>(job.source, 0, y);
    const Pixel* const end = origin + span.right;
    const A_long destRow = y - job.sourceRect.top + job.destY;
    Pixel* const dest = pixelAt<Pixel>(job.destination, job.destX - job.sourceRect.left, destRow);
    const Pixel* const mask =
        job.mask ? pixelAt<Pixel>(*job.mask, -job.maskOffset.h, y - job.maskOffset.v) : nullptr;
    const auto opacity = Lay::opacity(job);
    const Pixel* pixel = firstVisible(origin + span.left, end);
    while (pixel != end) {
        const std::ptrdiff_t x = pixel - origin;
        const auto covered = mask ? static_cast<typename Lay::Ratio>(mask[x].alpha) : Lay::kWhite;
        const bool whole = covered == Lay::kWhite && opacity == Lay::kWhite;
        if (whole && (pixel->alpha == Lay::kWhite || dest[x].alpha == 0)) {
            dest[x] = *pixel;  // what the formula comes to
        } else if (covered > 0) {
            Lay::lay(*pixel, covered, opacity, dest[x]);
        }
        pixel = firstVisible(pixel + 1, end);
    }
}

// Cuts `first` to `last` to what lies within 0 to `size` when shifted by `shift`.
void cut(A_long& first, A_long& last, A_long shift, A_long size) {
    first = std::max(first, -shift);
    last = std::min(last, size - shift);
}

template <class Lay>
void layAll(const TransferJob& job) {
    if (!(Lay::opacity(job) > 0)) {
        return;
    }
    PF_LRect rect = job.sourceRect;
    cut(rect.left, rect.right, 0, job.source.width);
    cut(rect.top, rect.bottom, 0, job.source.height);
    cut(rect.left, rect.right, job.destX - job.sourceRect.left, job.destination.width);
    cut(rect.top, rect.bottom, job.destY - job.sourceRect.top, job.destination.height);
    if (job.mask) {
        cut(rect.left, rect.right, -job.maskOffset.h, job.mask->width);
        cut(rect.top, rect.bottom, -job.maskOffset.v, job.mask->height);
    }
    if (rect.left >= rect.right) {
        return;
    }
    for (A_long y = rect.top; y < rect.bottom; ++y) {
        layRow<Lay>(job, y, {rect.left, rect.right});
    }
}

}  // namespace

void transferInFront(const TransferJob& job, Depth depth) {
    switch (depth) {
        case Depth::bits8:
            return layAll<Lay8>(job);
        case Depth::bits16:
            return layAll<Lay16>(job);
        case Depth::float32:
            return layAll<LayFloat>(job);
    }
}

}  // namespace standin
