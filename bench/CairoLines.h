// The same lines drawn by Cairo, one filled polygon a line: what a user would otherwise pick.
#pragma once

#include <vector>

#include "lines/LineRecord.h"
#include "shareForLines/path/Stroke.h"

namespace bench {

// Of one line, 0 to 1.
struct CairoPen {
    double red, green, blue, alpha;
};

// An ARGB32 surface. A line's outline follows the ramps of the stroke's form. What would take Cairo
// longer is left out: round ends, and a gradient for the opacity ramp. Waves are not drawn.
class CairoLines {
  public:
    CairoLines(int width, int height);
    ~CairoLines();
    CairoLines(const CairoLines&) = delete;
    CairoLines& operator=(const CairoLines&) = delete;

    void clear();
    // pens: one a line. Moves the cursors of the form's shapes.
    void draw(streakfall::StrokeForm& form, const std::vector<streakfall::LineRecord>& lines,
              const std::vector<CairoPen>& pens);

  private:
    struct Surface;
    Surface* surface;
};

}  // namespace bench
