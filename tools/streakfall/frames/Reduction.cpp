#include "Reduction.h"

#include <algorithm>
#include <type_traits>

namespace tool {

namespace {

template <class Channel>
Channel rounded(double mean) {
    if constexpr (std::is_floating_point_v<Channel>)
        return static_cast<Channel>(mean);
    else
        return static_cast<Channel>(mean + 0.5);
}

// Right and bottom do not belong to it.
struct Square {
    int left, top, right, bottom;
};

template <class Pixel>
Pixel meanOf(const standin::Image& image, const Square& square) {
    using Channel = decltype(Pixel::alpha);
    double alpha = 0;
    double plain[3] = {};
    double weighted[3] = {};
    for (int y = square.top; y < square.bottom; ++y) {
        for (int x = square.left; x < square.right; ++x) {
            const Pixel& pixel = image.row<Pixel>(y)[x];
            const double colour[3] = {static_cast<double>(pixel.red),
                                      static_cast<double>(pixel.green),
                                      static_cast<double>(pixel.blue)};
            alpha += pixel.alpha;
            for (int c = 0; c < 3; ++c) {
                plain[c] += colour[c];
                weighted[c] += colour[c] * pixel.alpha;
            }
        }
    }
    const double count =
        static_cast<double>(square.right - square.left) * (square.bottom - square.top);
    const auto mean = [&](int c) {
        return rounded<Channel>(alpha > 0 ? weighted[c] / alpha : plain[c] / count);
    };
    return {rounded<Channel>(alpha / count), mean(0), mean(1), mean(2)};
}

template <class Pixel>
void reduceInto(const standin::Image& from, int divisor, standin::Image& to) {
    for (int y = 0; y < to.height(); ++y) {
        const int top = y * divisor;
        const int bottom = std::min(top + divisor, from.height());
        for (int x = 0; x < to.width(); ++x) {
            const int left = x * divisor;
            const int right = std::min(left + divisor, from.width());
            to.row<Pixel>(y)[x] = meanOf<Pixel>(from, {left, top, right, bottom});
        }
    }
}

}  // namespace

standin::Image reduced(const standin::Image& image, int divisor) {
    if (divisor == 1) return image;
    standin::Image result((image.width() + divisor - 1) / divisor,
                          (image.height() + divisor - 1) / divisor, image.depth());
    switch (image.depth()) {
        case standin::Depth::bits8:
            reduceInto<PF_Pixel>(image, divisor, result);
            break;
        case standin::Depth::bits16:
            reduceInto<PF_Pixel16>(image, divisor, result);
            break;
        case standin::Depth::float32:
            reduceInto<PF_PixelFloat>(image, divisor, result);
            break;
    }
    return result;
}

}  // namespace tool
