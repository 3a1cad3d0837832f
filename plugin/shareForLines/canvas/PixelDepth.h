// The three pixel depths. A depth is a type that carries storage and arithmetic together; all
// drawing code is written once over it. This table is the complete list of what differs, with
// the same members in the same order, so that the three can be read side by side.
//
// Conversions to an integer truncate; nothing here rounds to nearest.
#pragma once

#include <cstdint>

#include "hostapi/hostapi.h"
#include "lines/Convert.h"

namespace streakfall {

// The double nearest 1/255. Pen alpha x coverage x this, truncated, equals the integer quotient
// by 255 for every pair of 8-bit values.
inline constexpr double kPer255 = 0.00392156862745098;

namespace detail {
// Truncates to 0 to limit; a NaN factor (an opacity centre at the line's very end) gives 0.
inline std::uint32_t toChannel(double value, double limit) {
    if (!(value > 0.0)) return 0;
    return static_cast<std::uint32_t>(value < limit ? value : limit);
}
}  // namespace detail

struct Depth8 {
    using Pixel = PF_Pixel;
    using Channel = std::uint8_t;
    static constexpr std::uint32_t kFormat = 0x62677261;  // "argb"
    static constexpr Channel kWhite = 255;
    static constexpr double kColorScale = 0.00392156862745098;  // channel to unit scale

    static Channel penColor(std::uint8_t c) { return c; }
    static Channel penAlpha(double opacity) { return narrow(255.0 * opacity); }
    static Channel scaleAlpha(Channel alpha, double factor) { return narrow(alpha * factor); }
    static Channel coverAlpha(Channel alpha, std::int32_t coverage) {
        return static_cast<Channel>(static_cast<double>(alpha * coverage) * kPer255);
    }
    // Weight left to the old colour. The shift divides by 256 over a factor of 255: kept, since
    // every stored picture depends on it.
    static std::uint32_t weightLeft(Channel a, Channel o) { return ((255u - a) * o) >> 8; }
    static Channel mix(Channel pen, Channel a, Channel stored, std::uint32_t b) {
        return static_cast<Channel>((std::uint32_t{pen} * a + std::uint32_t{stored} * b) / (a + b));
    }
    // Colour jitter: differences are formed on the integer channels, output truncates.
    static double difference(Channel x, Channel y) { return (int{x} - int{y}) * kColorScale; }
    static Channel fromUnit(double v) { return narrow(v * 255.0); }

  private:
    static Channel narrow(double v) { return static_cast<Channel>(detail::toChannel(v, 255.0)); }
};

struct Depth16 {
    using Pixel = PF_Pixel16;
    using Channel = std::uint16_t;
    static constexpr std::uint32_t kFormat = 0x36316561;  // "ae16"
    static constexpr Channel kWhite = 32768;
    static constexpr double kColorScale = 3.0517578125e-05;

    static Channel penColor(std::uint8_t c) { return static_cast<Channel>(c * 32768u / 255u); }
    static Channel penAlpha(double opacity) { return narrow(32768.0 * opacity); }
    static Channel scaleAlpha(Channel alpha, double factor) { return narrow(alpha * factor); }
    static Channel coverAlpha(Channel alpha, std::int32_t coverage) {
        return static_cast<Channel>(static_cast<double>(alpha * coverage) * kPer255);
    }
    static std::uint32_t weightLeft(Channel a, Channel o) { return ((32768u - a) * o) >> 15; }
    static Channel mix(Channel pen, Channel a, Channel stored, std::uint32_t b) {
        return static_cast<Channel>((std::uint32_t{pen} * a + std::uint32_t{stored} * b) / (a + b));
    }
    static double difference(Channel x, Channel y) { return (int{x} - int{y}) * kColorScale; }
    static Channel fromUnit(double v) { return narrow(v * 32768.0); }

  private:
    static Channel narrow(double v) { return static_cast<Channel>(detail::toChannel(v, 32768.0)); }
};

struct DepthFloat {
    using Pixel = PF_PixelFloat;
    using Channel = float;
    static constexpr std::uint32_t kFormat = 0x32336561;  // "ae32"
    static constexpr Channel kWhite = 1.0f;
    static constexpr double kColorScale = 1.0;

    static Channel penColor(std::uint8_t c) { return static_cast<float>(c) / 255.0f; }
    static Channel penAlpha(double opacity) { return narrow(opacity); }
    // Between two steps the factor may drift an ulp outside 0 to 1, and is used as it is: a pixel
    // can come to hold an alpha a hair below 0. What lies farther out is no drift.
    static Channel scaleAlpha(Channel alpha, double factor) {
        const double v = static_cast<double>(alpha) * factor;
        return v < 0.0 && v > -kDrift ? static_cast<float>(v) : narrow(v);
    }
    static Channel coverAlpha(Channel alpha, std::int32_t coverage) {
        const float product = static_cast<float>(coverage) * alpha;
        return static_cast<float>(static_cast<double>(product) * kPer255);
    }
    static float weightLeft(Channel a, Channel o) { return (1.0f - a) * o; }
    static Channel mix(Channel pen, Channel a, Channel stored, float b) {
        return (pen * a + stored * b) / (a + b);
    }
    static double difference(Channel x, Channel y) {
        return static_cast<double>(x) - static_cast<double>(y);
    }
    static Channel fromUnit(double v) { return static_cast<float>(v); }

  private:
    static constexpr double kDrift = 1e-9;

    // An alpha below 0 or none at all paints nothing; one above white counts as white.
    static float narrow(double v) {
        if (!(v > 0.0)) return 0.0f;
        return v < 1.0 ? static_cast<float>(v) : 1.0f;
    }
};

}  // namespace streakfall
