// The same line lists drawn by Cairo, one filled polygon a line: what a user would otherwise pick.
#pragma once

#include "Scenes.h"
#include "shareForLines/StrokeShape.h"

namespace bench {

// An ARGB32 surface of the scene's size. Draws every line of the scene, each in its own opaque
// colour. `ramp` is the rising curve from 0 to 1.
class CairoLines {
  public:
    explicit CairoLines(const Scene& scene);
    ~CairoLines();
    CairoLines(const CairoLines&) = delete;
    CairoLines& operator=(const CairoLines&) = delete;

    void clear();
    void draw(streakfall::StrokeShape ramp);

  private:
    struct Surface;
    const Scene& scene;
    Surface* surface;
};

}  // namespace bench
