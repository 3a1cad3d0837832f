// Draws a scene's lines into a buffer of its own, as a frame's lines are drawn, with either of the
// two ways to trace a line.
#pragma once

#include <cmath>
#include <cstring>
#include <vector>

#include "Scenes.h"
#include "shareForLines/LineCanvas.h"
#include "shareForLines/PixelDepth.h"
#include "shareForLines/Stroke.h"

namespace bench {

// How the lines of a scene are painted.
struct Look {
    const char* name;
    bool ownColors;  // each line its own colour, or all of them one
    double opacity;  // ratio
    bool wave;
};

template <class Depth>
class Drawing {
  public:
    using Pixel = typename Depth::Pixel;

    // The scene outlives the drawing.
    Drawing(const Scene& lines, const Look& how)
        : scene(lines),
          look(how),
          pixels(static_cast<std::size_t>(lines.width) * static_cast<std::size_t>(lines.height)) {
        world.data = reinterpret_cast<decltype(world.data)>(pixels.data());
        world.width = scene.width;
        world.height = scene.height;
        world.rowbytes = scene.width * static_cast<int>(sizeof(Pixel));
        canvas = streakfall::LineCanvas(nullptr, nullptr, &world, {});
        setUpStroke();
    }
    Drawing(const Drawing&) = delete;
    Drawing& operator=(const Drawing&) = delete;

    void clear() { std::memset(pixels.data(), 0, pixels.size() * sizeof(Pixel)); }

    // trace(stroke, canvas, line) draws one line.
    template <class Trace>
    void draw(Trace trace) {
        for (std::size_t i = 0; i < scene.lines.size(); ++i) {
            const streakfall::LineRecord& line = scene.lines[i];
            const LineColor c = colorOfLine(look.ownColors ? i : 0);
            stroke.pen = {Depth::penAlpha(look.opacity), Depth::penColor(c.red),
                          Depth::penColor(c.green), Depth::penColor(c.blue)};
            stroke.thickness = line.thickness;
            stroke.inLength = stroke.outLength =
                scene.ramp * std::hypot(line.x1 - line.x0, line.y1 - line.y0);
            trace(stroke, canvas, line);
        }
    }

    const std::vector<Pixel>& buffer() const { return pixels; }

  private:
    void setUpStroke() {
        stroke.inOutEnabled = scene.ramp > 0.0;
        stroke.startThicknessRatio = stroke.endThicknessRatio = scene.ramp > 0.0 ? 0.0 : 1.0;
        stroke.waveEnabled = look.wave;
        stroke.wave.amount = 20.0;
        stroke.wave.amountRandom = 0.5;
        stroke.wave.wavelength = 120.0;
        stroke.wave.wavelengthRandom = 0.5;
    }

    const Scene& scene;
    const Look look;
    std::vector<Pixel> pixels;
    PF_EffectWorld world{};
    streakfall::LineCanvas canvas;
    streakfall::Stroke<Depth> stroke;
};

}  // namespace bench
