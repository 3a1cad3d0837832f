// Draws lists of lines into a buffer of its own, as a frame's lines are drawn: by the product, or
// by its plain twin.
#pragma once

#include <cstring>
#include <vector>

#include "reference/PlainStroke.h"
#include "shareForLines/LineList.h"
#include "shareForLines/canvas/PixelDepth.h"
#include "shareForLines/path/Stroke.h"
#include "shareForLines/trace/LineCanvas.h"

namespace bench {

// The two ways to draw a list: play(stroke, canvas, lines, penOf).
inline constexpr auto kOurs = [](auto& stroke, auto& canvas, const auto& lines, auto penOf) {
    streakfall::drawLineList(stroke, canvas, lines, penOf);
};
inline constexpr auto kTwin = [](auto& stroke, auto& canvas, const auto& lines, auto penOf) {
    reference::drawLineList(stroke, canvas, lines, penOf);
};

// A line buffer and the pen that paints on it.
template <class Depth>
class Drawing {
  public:
    using Pixel = typename Depth::Pixel;

    Drawing(int width, int height)
        : pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height)) {
        world.data = reinterpret_cast<decltype(world.data)>(pixels.data());
        world.width = width;
        world.height = height;
        world.rowbytes = width * static_cast<int>(sizeof(Pixel));
        canvas = streakfall::LineCanvas(nullptr, nullptr, &world, {});
    }
    Drawing(const Drawing&) = delete;
    Drawing& operator=(const Drawing&) = delete;

    void clear() { std::memset(pixels.data(), 0, pixels.size() * sizeof(Pixel)); }

    streakfall::LineCanvas canvas;
    streakfall::Stroke<Depth> stroke;
    std::vector<Pixel> pixels;

  private:
    PF_EffectWorld world{};
};

}  // namespace bench
