#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

#include "host/Blocks.h"
#include "hostapi/hostapi.h"

namespace standin {

// Bits a channel. Whites: 255, 32768, 1.0.
enum class Depth { bits8, bits16, float32 };

int bytesPerPixel(Depth depth);
PF_PixelFormat pixelFormat(Depth depth);
int bitDepth(Depth depth);  // 8, 16, 32, as the smart road's records have it

template <class Pixel>
inline constexpr Depth kDepthOf = Depth::bits8;
template <>
inline constexpr Depth kDepthOf<PF_Pixel16> = Depth::bits16;
template <>
inline constexpr Depth kDepthOf<PF_PixelFloat> = Depth::float32;

// A picture with straight alpha, channels in the order alpha, red, green, blue, rows tight. A
// value.
class Image {
  public:
    Image() = default;
    // All zero: transparent black.
    Image(int width, int height, Depth depth);
    // For who writes every pixel: whatever was in the memory.
    static Image unwritten(int width, int height, Depth depth);
    // Of memory that holds the pixels, of just their size.
    static Image ofBlock(int width, int height, Depth depth, BlockBytes bytes);
    // Every pixel of one colour, channels from 0 to 1, rounded to the depth.
    static Image filled(int width, int height, Depth depth, double alpha, double red, double green,
                        double blue);
    static Image opaqueBlack(int width, int height, Depth depth) {
        return filled(width, height, depth, 1, 0, 0, 0);
    }

    int width() const { return width_; }
    int height() const { return height_; }
    Depth depth() const { return depth_; }
    bool empty() const { return width_ == 0 || height_ == 0; }

    std::size_t rowBytes() const;
    std::byte* data() { return bytes_.data(); }
    const std::byte* data() const { return bytes_.data(); }
    std::size_t size() const { return bytes_.size(); }

    // The pixel type must be that of the depth.
    template <class Pixel>
    Pixel* row(int y) {
        return reinterpret_cast<Pixel*>(data() + rowBytes() * static_cast<std::size_t>(y));
    }
    template <class Pixel>
    const Pixel* row(int y) const {
        return reinterpret_cast<const Pixel*>(data() + rowBytes() * static_cast<std::size_t>(y));
    }

    // Alpha, red, green, blue from 0 to 1 (float may lie outside).
    std::array<double, 4> get(int x, int y) const;
    void set(int x, int y, const std::array<double, 4>& argb);

    // Same size, depth and bytes.
    bool operator==(const Image& other) const = default;

  private:
    int width_ = 0;
    int height_ = 0;
    Depth depth_ = Depth::bits8;
    BlockBytes bytes_;
};

// FNV-1a, 64 bits, over a world's pixels as tight rows, without padding.
std::uint64_t hashPixels(const PF_EffectWorld& world, Depth depth);
std::uint64_t hashPixels(const Image& image);

}  // namespace standin
