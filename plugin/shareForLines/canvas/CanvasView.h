// CanvasView: the pixels that drawing writes, wherever they come from.
//
// A view: it owns nothing, and the pixels outlive it. One thread at a time.
#pragma once

#include <cstddef>
#include <cstdint>

namespace streakfall {

struct CanvasView {
    void* pixels = nullptr;     // pixel (0, 0)
    std::int32_t rowBytes = 0;  // may exceed width pixels
    std::int32_t width = 0;     // pixels
    std::int32_t height = 0;

    // First pixel of row y, 0 <= y < height.
    template <class Depth>
    typename Depth::Pixel* row(std::int32_t y) const {
        return reinterpret_cast<typename Depth::Pixel*>(static_cast<unsigned char*>(pixels) +
                                                        static_cast<std::ptrdiff_t>(rowBytes) * y);
    }
};

}  // namespace streakfall
