// The plain twin's pixels: what each depth does with alphas and colours, and how paint merges with
// what is there. Written apart from the product's, so that a slip in either shows.
#pragma once

#include <algorithm>
#include <cstdint>
#include <type_traits>

#include "hostapi/hostapi.h"

namespace reference {

inline constexpr double kOneIn255 = 0.00392156862745098;  // the double nearest to 1/255

// Whole channels: 8 bits of 255 parts and a shift by 8, 16 bits of 32768 parts and a shift by 15.
template <class Channel, std::uint32_t kWhiteValue, unsigned kShift>
struct WholeChannels {
    static constexpr Channel kWhite = static_cast<Channel>(kWhiteValue);

    // What is no number, as the factor at the very end of a line may be, paints nothing.
    static Channel scaled(Channel alpha, double factor) {
        const double v = alpha * factor;
        if (!(v > 0.0)) return 0;
        return static_cast<Channel>(std::min(v, static_cast<double>(kWhiteValue)));
    }
    static Channel covered(Channel alpha, int g) {
        return static_cast<Channel>(static_cast<double>(int{alpha} * g) * kOneIn255);
    }
    static Channel mixed(Channel pen, Channel a, Channel stored, Channel o) {
        const std::uint32_t b = ((kWhiteValue - a) * o) >> kShift;
        return static_cast<Channel>((std::uint32_t{pen} * a + std::uint32_t{stored} * b) / (a + b));
    }
};

struct FloatChannels {
    static constexpr float kWhite = 1.0f;

    // A factor that drifted below 0 by rounding is used as it is; what lies farther out is limited.
    static float scaled(float alpha, double factor) {
        const double v = static_cast<double>(alpha) * factor;
        if (v < 0.0 && v > -1e-9) return static_cast<float>(v);
        if (!(v > 0.0)) return 0.0f;
        return v < 1.0 ? static_cast<float>(v) : 1.0f;
    }
    static float covered(float alpha, int g) {
        const float product = static_cast<float>(g) * alpha;
        return static_cast<float>(static_cast<double>(product) * kOneIn255);
    }
    static float mixed(float pen, float a, float stored, float o) {
        const float b = (1.0f - a) * o;
        return (pen * a + stored * b) / (a + b);
    }
};

template <class Pixel>
using ChannelsOf =
    std::conditional_t<std::is_same_v<Pixel, PF_Pixel>, WholeChannels<std::uint8_t, 255, 8>,
                       std::conditional_t<std::is_same_v<Pixel, PF_Pixel16>,
                                          WholeChannels<std::uint16_t, 32768, 15>, FloatChannels>>;

// Paint of the pen's colour and alpha a. The pen's own alpha is not read.
template <class Pixel, class Channel>
void merge(Pixel& pixel, const Pixel& pen, Channel a) {
    using Channels = ChannelsOf<Pixel>;
    const Channel o = pixel.alpha;
    if (a == 0) return;
    if (o == 0 || a == Channels::kWhite) {
        pixel = {a, pen.red, pen.green, pen.blue};
        return;
    }
    if (pen.red != pixel.red || pen.green != pixel.green || pen.blue != pixel.blue) {
        pixel.red = Channels::mixed(pen.red, a, pixel.red, o);
        pixel.green = Channels::mixed(pen.green, a, pixel.green, o);
        pixel.blue = Channels::mixed(pen.blue, a, pixel.blue, o);
    }
    pixel.alpha = a > o ? a : o;
}

}  // namespace reference
