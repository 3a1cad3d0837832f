#include "shareForLines/fast/WhatShows.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>

#include "shareForLines/disc/Range.h"
#include "shareForLines/fast/SteepStrip.h"
#include "shareForLines/path/LineWalk.h"
#include "shareForLines/plain/DabPainter.h"
#include "shareForLines/simd/Begin.h"
#include "shareForLines/simd/Lanes.h"

namespace streakfall {
namespace {

using namespace lanes;

constexpr double kNearestDab = 0.55;  // of any place along a line, pixels
constexpr double kRounding = 0.07;    // quantised centres, and single precision
constexpr double kLeastInner = 2.2;   // a disc below it holds no square
constexpr std::size_t kMaxSamples = 1024;

// What is white for certain about a place of this radius.
double innerRadius(double r, double slope) {
    const double least = r - kNearestDab * slope;
    if (least >= kLargeRadius) {
        return std::sqrt(std::max((least - 1.0) * (least - 1.0) - kNearestDab * kNearestDab, 0.0)) -
               kRounding;
    }
    if (least < 3.0) return 0.0;
    // Signed distance below -0.90625: columns 0 and 1 are full in every row from 2 on.
    return std::sqrt(std::max(least * least - 1.8125 * least - kNearestDab * kNearestDab, 0.0)) -
           kRounding;
}

// Discs along a straight line, in order.
struct Samples {
    std::array<float, kMaxSamples> x, y, r2, leastHalf2;
    std::size_t count = 0;
    double upper = 1e9, lower = -1e9;  // rows

    void add(double px, double py, double r, double spacing) {
        upper = std::min(upper, py - r);
        lower = std::max(lower, py + r);
        x[count] = static_cast<float>(px);
        y[count] = static_cast<float>(py);
        r2[count] = static_cast<float>(r * r);
        // Intervals of neighbouring discs overlap from half the spacing on.
        leastHalf2[count++] = static_cast<float>(0.36 * spacing * spacing);
    }
};

struct Spans {
    Ints from, to;  // squares
};

// The part of a straight line in which hollow dabs may leave pixels open: from the first such strip
// along its axis to the last.
class OpenBand {
  public:
    OpenBand(const LineWalk& walk, const LineRecord& line)
        : strips(walk.openStrips()),
          strip(walk, line, sideOf(walk, std::countr_zero(strips)) - kAround,
                sideOf(walk, kStrips - std::countl_zero(strips)) + kAround) {}

    // False where it may be anywhere.
    bool isKnown() const { return strips == 0 || (~strips != 0 && strip.isSteep()); }

    // The squares of a row of them that may meet it.
    Range cellsOf(std::int32_t row) const {
        if (strips == 0) return {INT32_MAX, INT32_MAX - 1};
        const std::int32_t top = row * WhatShows::kCell;
        const auto [from, to] = strip.columnsOf(top, top + WhatShows::kCell - 1);
        return {static_cast<std::int32_t>(std::floor(from / WhatShows::kCell)),
                static_cast<std::int32_t>(std::floor(to / WhatShows::kCell))};
    }

  private:
    static constexpr double kAround = 1.0;  // quantised centres

    // Where a strip begins, pixels off the axis.
    static double sideOf(const LineWalk& walk, int number) {
        return (number - kStrips / 2) * (2.0 * walk.fullRadius() / kStrips);
    }

    OpenStrips strips;
    SteepStrip strip;
};

// Of eight rows of squares from `row` on: those that lie in the union of the discs, or, outward,
// those that meet it.
template <bool kOutward>
Spans spansOf(const Samples& samples, std::int32_t row) {
    constexpr auto cell = static_cast<float>(WhatShows::kCell);
    const Floats top = toFloats(lanes::all(row) + kIota) * cell, bottom = top + (cell - 1.0f);
    const Floats zero = lanes::all(0.0f), far = lanes::all(1e7f);
    Floats left = far, right = -far;
    for (std::size_t i = 0; i < samples.count; ++i) {
        const Floats y = lanes::all(samples.y[i]), x = lanes::all(samples.x[i]);
        const Floats up = top - y, down = bottom - y;
        const Floats dy =
            kOutward ? most(most(up, -down), zero) : most(most(up, -up), most(down, -down));
        const Floats half2 = lanes::all(samples.r2[i]) - dy * dy;
        const Ints valid = half2 >= lanes::all(samples.leastHalf2[i]);
        if (!any(valid)) continue;
        const Floats half = root(most(half2, zero));
        left = least(left, where(valid, x - half, far));
        right = most(right, where(valid, x + half, -far));
    }
    if (kOutward) return {floorOf(left / cell), floorOf(right / cell)};
    return {ceilOf(left / cell), floorOf((right - (cell - 1.0f)) / cell)};
}

// The first square from c to `to` that a later line than the current one hides, or does not; behind
// `to` where there is none.
template <bool kHidden>
std::int32_t firstCell(const std::uint32_t* cells, std::int32_t c, std::int32_t to,
                       std::uint32_t current) {
    const Ints now = lanes::all(static_cast<std::int32_t>(current));
    for (; c <= to; c += kCount) {
        const Ints eight = lanes::load(reinterpret_cast<const std::int32_t*>(cells + c));
        const unsigned hidden = bits(eight > now), wanted = kHidden ? hidden : ~hidden & 0xFF;
        if (wanted != 0) return std::min(c + std::countr_zero(wanted), to + 1);
    }
    return to + 1;
}

}  // namespace

void WhatShows::start(std::int32_t width, std::int32_t height) {
    columns = static_cast<std::size_t>((width + kCell - 1) / kCell);
    rows = static_cast<std::size_t>((height + kCell - 1) / kCell);
    current = added = 0;
    last.assign(columns * rows + lanes::kCount, 0);  // eight squares may be read from any
}

void WhatShows::add(StrokeForm& stroke, const LineRecord& line) {
    ++added;
    if (stroke.thickness < 2.0 * 3.0 || stroke.startOpacity != 1.0 || stroke.endOpacity != 1.0 ||
        !(stroke.opacityCenter >= 0.0 && stroke.opacityCenter < 1.0)) {
        return;
    }
    if (stroke.waveEnabled) {
        addWaved(stroke, line);
    } else {
        addStraight(stroke, line);
    }
}

void WhatShows::addStraight(StrokeForm& stroke, const LineRecord& line) {
    LineWalk walk(stroke, line);
    const double length = walk.length();
    if (!(length <= 32768.0)) return;
    const bool mayStayOpen = walk.middles() != LineWalk::Middles::kPainted;
    const double solidFrom = mayStayOpen ? walk.solidFrom() + 1.0 / length : 0.0;
    // From here on no disc has a pixel inside that the first dab has.
    const double closedFrom = walk.beginsHollow() ? (2.0 * walk.fullRadius() + 3.0) / length : 0.0;
    Samples closed, solid;
    const double spacing =
        std::max(std::sqrt(stroke.thickness), length / (static_cast<double>(kMaxSamples) - 8.0));
    const auto count = static_cast<std::size_t>(length / spacing) + 1;
    const double dx = line.x1 - line.x0, dy = line.y1 - line.y0;
    double before = walk.radiusAt(0.0), here = before;
    for (std::size_t i = 0; i <= count; ++i) {
        const double t = static_cast<double>(i) / static_cast<double>(count);
        const double next =
            i < count ? walk.radiusAt(static_cast<double>(i + 1) / static_cast<double>(count))
                      : here;
        const double step = length / static_cast<double>(count);
        // Steepest near the place: ramps bend by little between two samples.
        const double slope =
            1.5 * std::max(std::fabs(here - before), std::fabs(next - here)) / step;
        const double inner = innerRadius(here, slope);
        if (inner >= kLeastInner) {
            if (t >= closedFrom) closed.add(line.x0 + t * dx, line.y0 + t * dy, inner, step);
            if (t >= solidFrom) solid.add(line.x0 + t * dx, line.y0 + t * dy, inner, step);
        }
        before = here;
        here = next;
    }
    mark(solid, [](std::int32_t, const Range& cells) { return std::array{cells}; });
    if (!mayStayOpen) return;
    // Beside the strips with open pixels all that is inside a dab is painted by one.
    const OpenBand band(walk, line);
    if (!band.isKnown()) return;
    mark(closed, [&](std::int32_t row, const Range& cells) {
        const Range open = band.cellsOf(row);
        return std::array{Range{cells.from, std::min(cells.to, open.from - 1)},
                          Range{std::max(cells.from, open.to + 1), cells.to}};
    });
}

// Of a row's squares that lie in the samples those that `partsOf` leaves.
template <class Discs, class PartsOf>
void WhatShows::mark(const Discs& samples, PartsOf partsOf) {
    const std::int32_t first = std::max(0, static_cast<std::int32_t>(samples.upper) / kCell);
    const std::int32_t end = std::min(static_cast<std::int32_t>(rows),
                                      static_cast<std::int32_t>(samples.lower) / kCell + 1);
    for (std::int32_t row = first; row < end; row += kCount) {
        const Spans spans = spansOf<false>(samples, row);
        for (std::int32_t i = 0; i < std::min(kCount, end - row); ++i) {
            const Range cells{std::max(spans.from[i], 0),
                              std::min(spans.to[i], static_cast<std::int32_t>(columns) - 1)};
            std::uint32_t* cell = last.data() + static_cast<std::size_t>(row + i) * columns;
            for (const Range& part : partsOf(row + i, cells)) {
                if (!part.empty()) std::fill(cell + part.from, cell + part.to + 1, added);
            }
        }
    }
}

void WhatShows::addDisc(double x, double y, double r) {
    const auto first = std::max(0, static_cast<std::int32_t>(std::ceil((y - r) / kCell)));
    const auto end = std::min(static_cast<std::int32_t>(rows),
                              static_cast<std::int32_t>(std::floor((y + r - 3.0) / kCell)) + 1);
    for (std::int32_t row = first; row < end; ++row) {
        const double dy = std::max(std::fabs(row * kCell - y), std::fabs(row * kCell + 3.0 - y));
        const double half2 = r * r - dy * dy;
        if (half2 <= 0.0) continue;
        const double half = std::sqrt(half2);
        const auto from = std::max(0, static_cast<std::int32_t>(std::ceil((x - half) / kCell)));
        const auto to = std::min(static_cast<std::int32_t>(columns) - 1,
                                 static_cast<std::int32_t>(std::floor((x + half - 3.0) / kCell)));
        if (from > to) continue;
        std::uint32_t* cell = last.data() + static_cast<std::size_t>(row) * columns;
        std::fill(cell + from, cell + to + 1, added);
    }
}

void WhatShows::addWaved(StrokeForm& stroke, const LineRecord& line) {
    LineWalk walk(stroke, line);
    const bool staysOpen = walk.middles() != LineWalk::Middles::kPainted;
    Dab dab;
    double x = HUGE_VAL, y = HUGE_VAL;
    while (walk.next(dab)) {
        // The dab itself, so nothing is between it and its place.
        const double r = dab.radius;
        const double inner = r >= kLargeRadius ? r - 1.0 - kRounding
                             : r < 3.0         ? 0.0
                                       : std::sqrt(std::max(r * r - 1.8125 * r, 0.0)) - kRounding;
        if (inner < kLeastInner || (staysOpen && dab.hollow)) continue;
        const double dx = dab.x - x, dy = dab.y - y;
        if (dx * dx + dy * dy < 0.4 * r) continue;
        x = dab.x;
        y = dab.y;
        if (std::fabs(x) < 1e6 && std::fabs(y) < 1e6) addDisc(x, y, inner);
    }
}

bool WhatShows::hidesRow(std::int32_t from, std::int32_t to, std::int32_t y) const {
    from = std::max(from, 0);
    to = std::min(to, static_cast<std::int32_t>(columns) * kCell - 1);
    std::int32_t end = 0;
    return knows() && (from > to || !nextShown(from, to, y, end));
}

bool WhatShows::nextShown(std::int32_t& from, std::int32_t to, std::int32_t y,
                          std::int32_t& end) const {
    const std::uint32_t* cell = cells(y);
    const std::int32_t lastCell = to / kCell;
    const std::int32_t shown = firstCell<false>(cell, from / kCell, lastCell, current);
    if (shown > lastCell) return false;
    from = std::max(from, shown * kCell);
    end = std::min(to, firstCell<true>(cell, shown + 1, lastCell, current) * kCell - 1);
    return true;
}

bool WhatShows::hidesLine(const StrokeForm& stroke, const LineRecord& line) const {
    if (!knows()) return false;
    const double dx = line.x1 - line.x0, dy = line.y1 - line.y0;
    const double length = std::sqrt(dx * dx + dy * dy);
    const double wave = stroke.waveEnabled ? std::fabs(stroke.wave.amount) : 0.0;
    const double reach = 0.5 * stroke.thickness + 2.5 + wave;
    if (!(length <= 16384.0) || !(reach <= 16384.0)) return false;
    const double spacing = std::max(0.5 * reach, length / (static_cast<double>(kMaxSamples) - 8.0));
    const auto count = static_cast<std::size_t>(length / spacing) + 1;
    // A point of the line between two discs, half a spacing off at most.
    const double outer = std::sqrt(reach * reach + spacing * spacing / 4.0) + kRounding;
    Samples samples;
    for (std::size_t i = 0; i <= count; ++i) {
        const double t = static_cast<double>(i) / static_cast<double>(count);
        samples.add(line.x0 + t * dx, line.y0 + t * dy, outer, 0.0);
    }
    const auto cellOf = [](double v) { return static_cast<std::int32_t>(std::floor(v / kCell)); };
    const std::int32_t first = std::max(0, cellOf(std::min(line.y0, line.y1) - outer));
    const std::int32_t end =
        std::min(static_cast<std::int32_t>(rows), cellOf(std::max(line.y0, line.y1) + outer) + 1);
    for (std::int32_t row = first; row < end; row += kCount) {
        const Spans spans = spansOf<true>(samples, row);
        for (std::int32_t i = 0; i < std::min(kCount, end - row); ++i) {
            const std::int32_t from = std::max(spans.from[i], 0);
            const std::int32_t to = std::min(spans.to[i], static_cast<std::int32_t>(columns) - 1);
            const std::uint32_t* cell = last.data() + static_cast<std::size_t>(row + i) * columns;
            for (std::int32_t c = from; c <= to; ++c) {
                if (cell[c] <= current) return false;
            }
        }
    }
    return true;
}

}  // namespace streakfall

#include "shareForLines/simd/End.h"
