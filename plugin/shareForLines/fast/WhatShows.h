// WhatShows: which pixels a later line paints white for certain, so that what earlier lines paint
// there can never be seen.
//
// Paint of full alpha replaces whatever lies under it. Before the first line is painted all lines
// are looked at, in list order, and each square of kCell x kCell pixels remembers the last one that
// surely paints all of it at full alpha; nothing of earlier lines need be painted there. What a
// square is told is on the safe side:
//
//  - A pixel nearer than r - 1 to the quantised centre of a large dab is inside it, and gets the
//    pen's own alpha. Where hollow dabs may leave it open (LineWalk::middles, openStrips) only what
//    solid dabs paint is taken. A small dab covers in full what lies 15.5 / 16 - 1/16 pixels within
//    its circle by the signed distance of the coverage table.
//  - A dab lies within kNearestDab of any place along the line; the radius changes by less than the
//    slope there times that.
//
// Only lines of a white pen and a steady opacity are looked at, and none when they would cover less
// than half of the canvas together. Owner: the canvas.
#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

#include "lines/LineRecord.h"
#include "shareForLines/path/Stroke.h"

namespace streakfall {

class WhatShows {
  public:
    static constexpr std::int32_t kCell = 4;  // pixels

    // Knows nothing, and hides nothing.
    void forget() { last.clear(); }
    // Lines are added next, if there are any.
    void start(std::int32_t width, std::int32_t height);
    // The next line of the list, with the stroke as it will paint it, at full alpha. Needs a
    // processor with AVX2.
    void add(StrokeForm& stroke, const LineRecord& line);

    // From here on it is asked for the line of this number, from 0 on in the order of add().
    void at(std::size_t line) { current = static_cast<std::uint32_t>(line) + 1; }
    bool knows() const { return !last.empty(); }

    // True when a later line hides this pixel of the canvas.
    bool hides(std::int32_t x, std::int32_t y) const {
        return knows() && cells(y)[x / kCell] > current;
    }
    // The same for all of the eight pixels from here on that are on the canvas.
    bool hidesEight(std::int32_t x, std::int32_t y) const {
        if (!knows()) return false;
        const std::uint32_t* cell = cells(y);
        const std::size_t to = std::min(static_cast<std::size_t>(x + 7) / kCell, columns - 1);
        for (std::size_t c = static_cast<std::size_t>(x) / kCell; c <= to; ++c) {
            if (cell[c] <= current) return false;
        }
        return true;
    }
    // The columns from `from` on, as far as `to`, that begin with the first one that shows and end
    // before the next square that does not; none when all are hidden.
    bool nextShown(std::int32_t& from, std::int32_t to, std::int32_t y, std::int32_t& end) const;
    // True when none of these columns shows, as far as they are on the canvas.
    bool hidesRow(std::int32_t from, std::int32_t to, std::int32_t y) const;
    // True when nothing of the line can show.
    bool hidesLine(const StrokeForm& stroke, const LineRecord& line) const;

  private:
    const std::uint32_t* cells(std::int32_t y) const {
        return last.data() + static_cast<std::size_t>(y / kCell) * columns;
    }
    void addStraight(StrokeForm& stroke, const LineRecord& line);
    void addWaved(StrokeForm& stroke, const LineRecord& line);
    template <class Discs, class PartsOf>
    void mark(const Discs& samples, PartsOf partsOf);
    void addDisc(double x, double y, double r);

    std::size_t columns = 0, rows = 0;
    std::uint32_t current = 0, added = 0;
    std::vector<std::uint32_t> last;  // by square: the last line that paints it white, from 1 on
};

}  // namespace streakfall
