// OpenPixels: of the pixels inside hollow dabs of a line, those that may not be painted by any
// other of its dabs (OpenMiddles.h says why most are).
//
// The line is walked once beforehand. Of every step the pixels are noted that the new dab has
// inside and leaves open, and the one before had not inside, and those that go out likewise, in the
// rows in which the line may show. What is in both sets may stay open; what is not is painted at
// the pen's alpha, or hidden.
//
// Owner: the painter of a frame. Some two bits a pixel of the canvas, from the first line on that
// needs them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "lines/LineRecord.h"
#include "shareForLines/disc/Range.h"
#include "shareForLines/fast/WhatShows.h"
#include "shareForLines/path/LineWalk.h"
#include "shareForLines/path/Stroke.h"

namespace streakfall {

// A pixel whose value was worked out before its neighbours were painted.
template <class Depth>
struct KeptPixel {
    typename Depth::Pixel* at;
    typename Depth::Pixel value;
};

class OpenPixels {
  public:
    // Finds those of a line that may show, on a canvas of this size. Moves the stroke's cursors and
    // wave.
    void find(StrokeForm& stroke, const LineRecord& line, const WhatShows& shows,
              std::int32_t width, std::int32_t height);

    // Of a line that leaves none.
    void clear() {
        found = kNone;
        everywhere = false;
    }

    // True when there is none that may show.
    bool empty() const { return found.empty(); }
    // True when no pixel inside a hollow dab is sure to be painted.
    bool all() const { return everywhere; }

    // Bits for those of the eight pixels from (x, y) on to the right, or down. The first one may
    // lie off the canvas, at the left or above.
    unsigned across(std::int32_t x, std::int32_t y) const;
    unsigned down(std::int32_t x, std::int32_t y) const;
    // Rows that have some.
    const Range& rows() const { return found; }

  private:
    using Words = std::vector<std::uint64_t>;
    struct Disc;

    void start(std::int32_t width, std::int32_t height);
    void addStep(const Disc& before, const Disc& dab);
    void addEnds(const Disc& before, const Disc& dab);
    void addAll(Words& set, const Disc& dab);
    void addRow(Words& set, const Disc& dab, const Disc* other, std::int32_t y);
    void lookAtRows(const LineWalk& walk, const StrokeForm& stroke, const LineRecord& line,
                    const WhatShows& shows);
    bool showsRows(std::int32_t from, std::int32_t to) const;
    void add(Words& set, std::int32_t from, std::int32_t to, std::int32_t y);
    void gatherEights();
    bool has(std::int32_t x, std::int32_t y) const;

    std::int32_t columns = 0, rowCount = 0;
    std::size_t stride = 0;  // words a row
    Words in, out;
    Words eights;                     // of the open pixels of eight rows together
    std::vector<std::int32_t> shown;  // by row: how many rows above it show something of the line
    Range touched = kNone, found = kNone;
    bool everywhere = false;
};

}  // namespace streakfall
