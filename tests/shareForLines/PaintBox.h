// A line buffer in a plain array, so that strokes can be drawn with no host at all.
#pragma once

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "shareForLines/canvas/PixelDepth.h"
#include "shareForLines/trace/LineCanvas.h"

namespace streakfall {

template <class Depth>
struct PaintBox {
    using Pixel = typename Depth::Pixel;

    // spare: pixels at the end of each row that belong to nobody.
    PaintBox(int width, int height, int spare = 0)
        : stride(width + spare), storage(static_cast<std::size_t>(stride * height)) {
        world.data = reinterpret_cast<decltype(world.data)>(storage.data());
        world.width = width;
        world.height = height;
        world.rowbytes = stride * static_cast<int>(sizeof(Pixel));
        canvas = LineCanvas(nullptr, nullptr, &world, {});
    }
    PaintBox(const PaintBox&) = delete;
    PaintBox& operator=(const PaintBox&) = delete;

    Pixel& at(int x, int y) { return storage[static_cast<std::size_t>(y * stride + x)]; }

    std::vector<int> alphas(int y, int from, int to) {
        std::vector<int> row;
        for (int x = from; x <= to; ++x) row.push_back(static_cast<int>(at(x, y).alpha));
        return row;
    }

    std::size_t painted() const {
        std::size_t count = 0;
        for (const Pixel& p : storage) count += p.alpha != 0;
        return count;
    }

    // Names the first pixel whose bytes differ, spare ones too; empty when there is none.
    std::string firstDifference(const PaintBox& other) const {
        const auto bytes = [](const PaintBox& box, std::size_t i) {
            return std::string(reinterpret_cast<const char*>(&box.storage[i]), sizeof(Pixel));
        };
        if (std::memcmp(storage.data(), other.storage.data(), storage.size() * sizeof(Pixel)) ==
            0) {
            return "";
        }
        std::size_t i = 0;
        while (bytes(*this, i) == bytes(other, i)) ++i;
        const auto width = static_cast<std::size_t>(stride);
        return "pixel " + std::to_string(i % width) + ", " + std::to_string(i / width);
    }

    int stride;
    std::vector<Pixel> storage;
    PF_EffectWorld world{};
    LineCanvas canvas;
};

template <class Depth>
typename Depth::Pixel penOf(std::uint8_t r, std::uint8_t g, std::uint8_t b, double opacity = 1.0) {
    return {Depth::penAlpha(opacity), Depth::penColor(r), Depth::penColor(g), Depth::penColor(b)};
}

using Depths = ::testing::Types<Depth8, Depth16, DepthFloat>;

}  // namespace streakfall
