#include "host/FillCopy.h"

#include <algorithm>
#include <cstring>

namespace standin {
namespace {

PF_LRect wholeOf(const PF_EffectWorld& world) { return {0, 0, world.width, world.height}; }

bool within(const PF_LRect& rect, const PF_EffectWorld& world) {
    return rect.left >= 0 && rect.top >= 0 && rect.right <= world.width &&
           rect.bottom <= world.height && rect.left <= rect.right && rect.top <= rect.bottom;
}

std::byte* rowAt(const PF_EffectWorld& world, A_long y) {
    return reinterpret_cast<std::byte*>(world.data) +
           static_cast<std::ptrdiff_t>(y) * world.rowbytes;
}

template <class Pixel>
void fillRows(PF_EffectWorld& world, const PF_LRect& rect, const Pixel& color) {
    for (A_long y = rect.top; y < rect.bottom; ++y) {
        auto* row = reinterpret_cast<Pixel*>(rowAt(world, y));
        std::fill(row + rect.left, row + rect.right, color);
    }
}

template <class Pixel>
FillColor fromRatios(const Pixel& color, double white) {
    Image pixel(1, 1, Depth::bits8);
    Image deep(1, 1, Depth::bits16);
    const std::array<double, 4> argb{color.alpha / white, color.red / white, color.green / white,
                                     color.blue / white};
    pixel.set(0, 0, argb);
    deep.set(0, 0, argb);
    return {*pixel.row<PF_Pixel>(0),
            *deep.row<PF_Pixel16>(0),
            {static_cast<float>(argb[0]), static_cast<float>(argb[1]), static_cast<float>(argb[2]),
             static_cast<float>(argb[3])}};
}

}  // namespace

FillColor fillColor(const PF_Pixel& color) { return fromRatios(color, PF_MAX_CHAN8); }
FillColor fillColor(const PF_Pixel16& color) { return fromRatios(color, PF_MAX_CHAN16); }
FillColor fillColor(const PF_PixelFloat& color) { return fromRatios(color, 1); }

void fill(PF_EffectWorld& world, Depth depth, const PF_LRect* rect, const FillColor& color) {
    PF_LRect part = rect ? *rect : wholeOf(world);
    part.left = std::max(part.left, 0);
    part.top = std::max(part.top, 0);
    part.right = std::max(part.left, std::min(part.right, world.width));
    part.bottom = std::min(part.bottom, world.height);
    switch (depth) {
        case Depth::bits8:
            return fillRows(world, part, color.bits8);
        case Depth::bits16:
            return fillRows(world, part, color.bits16);
        case Depth::float32:
            return fillRows(world, part, color.float32);
    }
}

bool copy(const PF_EffectWorld& source, PF_EffectWorld& destination, Depth depth,
          const PF_LRect* sourceRect, const PF_LRect* destRect) {
    const PF_LRect from = sourceRect ? *sourceRect : wholeOf(source);
    const PF_LRect to = destRect ? *destRect : wholeOf(destination);
    const A_long width = from.right - from.left;
    const A_long height = from.bottom - from.top;
    if (!within(from, source) || !within(to, destination) || to.right - to.left != width ||
        to.bottom - to.top != height) {
        return false;
    }
    const A_long bytes = bytesPerPixel(depth);
    for (A_long y = 0; y < height; ++y) {
        std::memcpy(rowAt(destination, to.top + y) + to.left * bytes,
                    rowAt(source, from.top + y) + from.left * bytes,
                    static_cast<std::size_t>(width * bytes));
    }
    return true;
}

}  // namespace standin
