#include "host/Image.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>

namespace standin {
namespace {

// Channels of a picture are reached by number, alpha first, in all three pixel records.
double channelAsRatio(const std::byte* pixel, Depth depth, int channel) {
    switch (depth) {
        case Depth::bits8:
            return reinterpret_cast<const std::uint8_t*>(pixel)[channel] / double{PF_MAX_CHAN8};
        case Depth::bits16:
            return reinterpret_cast<const std::uint16_t*>(pixel)[channel] / double{PF_MAX_CHAN16};
        default:
            return reinterpret_cast<const float*>(pixel)[channel];
    }
}

long rounded(double ratio, double white) {
    return std::lround(std::clamp(ratio, 0.0, 1.0) * white);
}

void setChannel(std::byte* pixel, Depth depth, int channel, double ratio) {
    switch (depth) {
        case Depth::bits8:
            reinterpret_cast<std::uint8_t*>(pixel)[channel] =
                static_cast<std::uint8_t>(rounded(ratio, PF_MAX_CHAN8));
            break;
        case Depth::bits16:
            reinterpret_cast<std::uint16_t*>(pixel)[channel] =
                static_cast<std::uint16_t>(rounded(ratio, PF_MAX_CHAN16));
            break;
        default:
            reinterpret_cast<float*>(pixel)[channel] = static_cast<float>(ratio);
    }
}

void hashBytes(std::uint64_t& hash, const void* data, std::size_t size) {
    const auto* byte = static_cast<const unsigned char*>(data);
    for (std::size_t i = 0; i < size; ++i) {
        hash = (hash ^ byte[i]) * 0x100000001b3ull;
    }
}

constexpr std::uint64_t kHashStart = 0xcbf29ce484222325ull;

}  // namespace

int bytesPerPixel(Depth depth) {
    return depth == Depth::bits8 ? 4 : depth == Depth::bits16 ? 8 : 16;
}

PF_PixelFormat pixelFormat(Depth depth) {
    return depth == Depth::bits8    ? PF_PixelFormat_ARGB32
           : depth == Depth::bits16 ? PF_PixelFormat_ARGB64
                                    : PF_PixelFormat_ARGB128;
}

int bitDepth(Depth depth) { return bytesPerPixel(depth) * 2; }

Image::Image(int width, int height, Depth depth)
    : width_(width),
      height_(height),
      depth_(depth),
      bytes_(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) *
             static_cast<std::size_t>(bytesPerPixel(depth))) {}

Image Image::unwritten(int width, int height, Depth depth) {
    return ofBlock(
        width, height, depth,
        BlockBytes::unwritten(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) *
                              static_cast<std::size_t>(bytesPerPixel(depth))));
}

Image Image::filled(int width, int height, Depth depth, double alpha, double red, double green,
                    double blue) {
    Image image = unwritten(width, height, depth);
    if (image.empty()) {
        return image;
    }
    image.set(0, 0, {alpha, red, green, blue});
    // What is there is copied behind itself.
    for (std::size_t made = static_cast<std::size_t>(bytesPerPixel(depth)); made < image.size();
         made *= 2) {
        std::memcpy(image.data() + made, image.data(), std::min(made, image.size() - made));
    }
    return image;
}

Image Image::ofBlock(int width, int height, Depth depth, BlockBytes bytes) {
    Image image;
    image.width_ = width;
    image.height_ = height;
    image.depth_ = depth;
    image.bytes_ = std::move(bytes);
    return image;
}

std::size_t Image::rowBytes() const {
    return static_cast<std::size_t>(width_) * static_cast<std::size_t>(bytesPerPixel(depth_));
}

std::array<double, 4> Image::get(int x, int y) const {
    const std::byte* pixel = row<std::byte>(y) + x * bytesPerPixel(depth_);
    std::array<double, 4> argb{};
    for (int i = 0; i < 4; ++i) {
        argb[i] = channelAsRatio(pixel, depth_, i);
    }
    return argb;
}

void Image::set(int x, int y, const std::array<double, 4>& argb) {
    std::byte* pixel = row<std::byte>(y) + x * bytesPerPixel(depth_);
    for (int i = 0; i < 4; ++i) {
        setChannel(pixel, depth_, i, argb[i]);
    }
}

std::uint64_t hashPixels(const PF_EffectWorld& world, Depth depth) {
    std::uint64_t hash = kHashStart;
    const auto* data = reinterpret_cast<const std::byte*>(world.data);
    for (A_long y = 0; y < world.height; ++y) {
        hashBytes(
            hash, data + static_cast<std::ptrdiff_t>(y) * world.rowbytes,
            static_cast<std::size_t>(world.width) * static_cast<std::size_t>(bytesPerPixel(depth)));
    }
    return hash;
}

std::uint64_t hashPixels(const Image& image) {
    std::uint64_t hash = kHashStart;
    hashBytes(hash, image.data(), image.size());
    return hash;
}

}  // namespace standin
