#include "shareForLines/fast/OpenPixels.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "shareForLines/disc/CirclePath.h"
#include "shareForLines/disc/HollowRow.h"
#include "shareForLines/fast/SteepStrip.h"
#include "shareForLines/path/LineWalk.h"
#include "shareForLines/path/OpenMiddles.h"
#include "shareForLines/plain/DabPainter.h"

namespace streakfall {
namespace {

constexpr std::int32_t kBits = 64;     // of a word
constexpr double kLongestStep2 = 1.1;  // squared pixels; longer ones leave out what is between
constexpr double kMostGrowth = 0.9;    // of the radius, pixels
constexpr double kFlat = 0.70710678118654752;  // part of the radius from which on arcs are flat
static_assert(kFarthestEnd < kHollowRim && kLeastDepth < kWholeDepth);
constexpr std::int32_t kMixed = 2;  // pixels more that may be interior where arcs meet

std::int32_t rowOf(double y) { return truncToI32(std::floor(y)); }

}  // namespace

// A dab as its rows are filled. What a row has inside is worked out once.
struct OpenPixels::Disc {
    double x = 0, y = 0, radius = 0;
    bool hollow = false, large = false;
    DabCentre centre{};
    std::int32_t limit = 0;      // 1/256 pixels squared: inside below it
    std::int32_t wholeRows = 0;  // rows from the middle to where all are filled whole, and some

    void place(const Dab& dab) {
        x = dab.x;
        y = dab.y;
        radius = dab.radius;
        large = dab.radius >= kLargeRadius;
        hollow = dab.hollow && large;
        centre = quantiseCentre(dab.x, dab.y);
        limit = static_cast<std::int32_t>(std::ceil(256.0 * (dab.radius * dab.radius)));
        wholeRows = truncToI32(dab.radius + 5.0) - 5;
        known.clear();
    }

    // Canvas columns inside the circle in row y; none when from > to.
    Range insideOf(std::int32_t row) const {
        if (known.empty()) forgetRows();
        const auto i = static_cast<std::size_t>(row - firstRow);
        if (i >= known.size()) return kNone;
        if (!known[i]) {
            known[i] = true;
            rows[i] = findInside(row);
        }
        return rows[i];
    }

    // The interior: what a row has inside, less a pixel at each end, as far as the row beyond has
    // it inside, too. `more`: may be interior beyond that, where flat and steep arcs meet.
    Range interiorOf(std::int32_t row, std::int32_t& more) const {
        const std::int32_t away = row - centre.yi;
        const Range here = insideOf(row), beyond = insideOf(away < 0 ? row - 1 : row + 1);
        more = std::abs(away) < kFlat * radius + 4.0 ? kMixed : 0;
        if (here.empty() || beyond.empty()) return kNone;
        return {std::max(here.from + 1, beyond.from), std::min(here.to - 1, beyond.to)};
    }

  private:
    void forgetRows() const {
        const std::int32_t reach = truncToI32(radius) + 2;
        firstRow = centre.yi - reach;
        known.assign(static_cast<std::size_t>(2 * reach + 2), false);
        rows.resize(known.size());
    }

    Range findInside(std::int32_t row) const {
        const std::int32_t v = 16 * (row - centre.yi) - centre.fy, level = limit - v * v;
        if (level <= 0) return kNone;
        const auto u = static_cast<std::int32_t>(std::sqrt(static_cast<double>(level - 1)));
        return {centre.xi - ((u - centre.fx) >> 4), centre.xi + ((u + centre.fx) >> 4)};
    }

    // By row from the first one on; beyond them the circle has none inside. Of a large dab only.
    mutable std::int32_t firstRow = 0;
    mutable std::vector<std::uint8_t> known;
    mutable std::vector<Range> rows;
};

void OpenPixels::start(std::int32_t width, std::int32_t height) {
    if (columns != width || rowCount != height) {
        columns = width;
        rowCount = height;
        stride = static_cast<std::size_t>(width) / kBits + 2;
        in.assign(stride * static_cast<std::size_t>(height), 0);
        out = in;
    } else if (!touched.empty()) {
        const auto from = static_cast<std::ptrdiff_t>(stride) * touched.from;
        const auto to = static_cast<std::ptrdiff_t>(stride) * (touched.to + 1);
        std::fill(in.begin() + from, in.begin() + to, 0);
        std::fill(out.begin() + from, out.begin() + to, 0);
    }
    touched = {height, -1};
}

void OpenPixels::add(Words& set, std::int32_t from, std::int32_t to, std::int32_t y) {
    from = std::max(from, 0);
    to = std::min(to, columns - 1);
    if (from > to) return;
    touched = {std::min(touched.from, y), std::max(touched.to, y)};
    std::uint64_t* row = set.data() + stride * static_cast<std::size_t>(y);
    for (std::int32_t x = from; x <= to;) {
        const std::int32_t bit = x % kBits, count = std::min(kBits - bit, to - x + 1);
        row[x / kBits] |= (~std::uint64_t{0} >> (kBits - count)) << bit;
        x += count;
    }
}

// Rows from one to another in which something of the line may show.
bool OpenPixels::showsRows(std::int32_t from, std::int32_t to) const {
    from = std::max(from, 0);
    to = std::min(to, rowCount - 1);
    return from <= to &&
           shown[static_cast<std::size_t>(to + 1)] > shown[static_cast<std::size_t>(from)];
}

void OpenPixels::lookAtRows(const LineWalk& walk, const StrokeForm& stroke, const LineRecord& line,
                            const WhatShows& shows) {
    constexpr double kAround = 3.0;
    const double half = walk.fullRadius() + kAround;
    const double wave = stroke.waveEnabled ? std::fabs(stroke.wave.amount) : 0.0;
    const double top = std::min(line.y0, line.y1) - half - wave - WhatShows::kCell;
    const double bottom = std::max(line.y0, line.y1) + half + wave;
    const SteepStrip strip(walk, line, -half - wave, half + wave);
    shown.resize(static_cast<std::size_t>(rowCount) + 1);
    shown[0] = 0;
    bool something = false;
    for (std::int32_t y = 0; y < rowCount; ++y) {
        // All rows of a square are hidden alike.
        if (y % WhatShows::kCell == 0) {
            std::int32_t from = 0, to = columns - 1;
            if (strip.isSteep()) {
                const auto [left, right] = strip.columnsOf(y, y + WhatShows::kCell);
                from = std::max(from, static_cast<std::int32_t>(std::floor(left)));
                to = std::min(to, static_cast<std::int32_t>(std::ceil(right)));
            }
            something = y > top && y < bottom && !shows.hidesRow(from, to, y);
        }
        const auto i = static_cast<std::size_t>(y);
        shown[i + 1] = shown[i] + something;
    }
}

// What the dab leaves open of a row that shows and the other one has not inside.
void OpenPixels::addRow(Words& set, const Disc& dab, const Disc* other, std::int32_t y) {
    if (!showsRows(y, y)) return;
    std::int32_t more = 0, otherMore = 0;
    const Range row = dab.interiorOf(y, more);
    const Range open{row.from - more + kHollowRim, row.to + more - kHollowRim};
    if (row.empty() || open.empty()) return;
    const Range had = other != nullptr ? other->interiorOf(y, otherMore) : kNone;
    if (had.empty()) {
        add(set, open.from, open.to, y);
    } else {
        add(set, open.from, std::min(open.to, had.from - 1), y);
        add(set, std::max(open.from, had.to + 1), open.to, y);
    }
}

void OpenPixels::addAll(Words& set, const Disc& dab) {
    if (!dab.hollow) return;
    const std::int32_t reach = dab.wholeRows - kWholeDepth;
    const std::int32_t from = std::max(dab.centre.yi - reach, 0);
    const std::int32_t to = std::min(dab.centre.yi + reach, rowCount - 1);
    for (std::int32_t y = from; y <= to; ++y) addRow(set, dab, nullptr, y);
}

// Rows of the two dabs, from their tops and bottoms on, as deep as ends are fast.
void OpenPixels::addEnds(const Disc& before, const Disc& dab) {
    const double x = std::fabs(dab.x - before.x), y = std::fabs(dab.y - before.y);
    const double r = std::max(dab.radius, before.radius);
    const double growth = std::fabs(dab.radius - before.radius);
    const auto addRows = [this](Words& set, const Disc& its, const Disc& other, std::int32_t away) {
        if (!its.hollow || away > its.wholeRows - kWholeDepth) return;
        addRow(set, its, &other, its.centre.yi - away);
        if (away > 0) addRow(set, its, &other, its.centre.yi + away);
    };
    const std::int32_t reach = std::max(dab.wholeRows, before.wholeRows) - kWholeDepth;
    if (!showsRows(dab.centre.yi - reach - 2, dab.centre.yi + reach + 2)) return;
    for (std::int32_t away = reach; away >= 0; --away) {
        const double depth = std::max(r - away - 2.0, kLeastDepth);
        if (endMoves(r, growth, std::min(depth, r), x, y) <= kFarthestEnd) return;
        addRows(in, dab, before, away);
        addRows(out, before, dab, away);
    }
}

void OpenPixels::addStep(const Disc& before, const Disc& dab) {
    if (!before.hollow && !dab.hollow) return;
    const double x = dab.x - before.x, y = dab.y - before.y;
    if (!(x * x + y * y <= kLongestStep2) ||
        !(std::fabs(dab.radius - before.radius) <= kMostGrowth)) {
        addAll(out, before);
        addAll(in, dab);
        return;
    }
    // What a small dab has inside it paints.
    if (before.large && dab.large) addEnds(before, dab);
}

void OpenPixels::find(StrokeForm& stroke, const LineRecord& line, const WhatShows& shows,
                      std::int32_t width, std::int32_t height) {
    clear();
    LineWalk walk(stroke, line);
    const LineWalk::Middles middles = walk.middles();
    everywhere = middles == LineWalk::Middles::kLeft;
    if (everywhere) found = {0, height - 1};
    if (everywhere || middles == LineWalk::Middles::kPainted) return;
    start(width, height);
    walk.keepTo(width, height);
    lookAtRows(walk, stroke, line, shows);
    if (!showsRows(0, height - 1)) return;
    Dab last, dab;
    if (!walk.next(last)) return;
    Disc before, now;
    before.place(last);
    addAll(in, before);
    bool hollow = before.hollow, placed = true;
    for (; walk.next(dab); last = dab) {
        const double reach = std::max(last.radius, dab.radius) + 3.0;
        hollow = hollow || (dab.hollow && dab.radius >= kLargeRadius);
        if (!showsRows(rowOf(std::min(last.y, dab.y) - reach),
                       rowOf(std::max(last.y, dab.y) + reach))) {
            placed = false;
            continue;
        }
        if (!placed) before.place(last);
        now.place(dab);
        addStep(before, now);
        std::swap(before, now);
        placed = true;
    }
    if (!hollow || touched.empty()) return;
    found = {height, -1};
    for (std::int32_t y = touched.from; y <= touched.to; ++y) {
        std::uint64_t any = 0;
        const std::size_t row = stride * static_cast<std::size_t>(y);
        for (std::size_t i = row; i < row + stride; ++i) {
            if (middles == LineWalk::Middles::kPaintedComingOrGoing) in[i] &= out[i];
            any |= in[i];
        }
        if (any != 0) found = {std::min(found.from, y), std::max(found.to, y)};
    }
    gatherEights();
}

// What of eight rows together is open, so that most questions are answered at once.
void OpenPixels::gatherEights() {
    const auto height = static_cast<std::size_t>(rowCount);
    eights.resize(stride * (height / 8 + 1));
    if (found.empty()) return;
    const auto first = static_cast<std::size_t>(found.from) / 8,
               last = static_cast<std::size_t>(found.to) / 8;
    for (std::size_t group = first; group <= last; ++group) {
        std::uint64_t* to = eights.data() + stride * group;
        std::fill(to, to + stride, 0);
        for (std::size_t y = 8 * group; y < std::min(8 * group + 8, height); ++y) {
            const std::uint64_t* from = in.data() + stride * y;
            for (std::size_t i = 0; i < stride; ++i) to[i] |= from[i];
        }
    }
}

bool OpenPixels::has(std::int32_t x, std::int32_t y) const {
    if (x < 0 || x >= columns || !found.has(y)) return false;
    const std::uint64_t word =
        in[stride * static_cast<std::size_t>(y) + static_cast<std::size_t>(x / kBits)];
    return (word >> (x % kBits) & 1) != 0;
}

unsigned OpenPixels::across(std::int32_t x, std::int32_t y) const {
    if (!found.has(y) || x <= -8 || x >= columns) return 0;
    if (x < 0) return across(0, y) << -x & 0xFF;
    const std::uint64_t* word = in.data() + stride * static_cast<std::size_t>(y) + x / kBits;
    const std::int32_t bit = x % kBits;
    std::uint64_t bits = word[0] >> bit;
    if (bit > kBits - 8) bits |= word[1] << (kBits - bit);
    return static_cast<unsigned>(bits & 0xFF);
}

unsigned OpenPixels::down(std::int32_t x, std::int32_t y) const {
    if (x < 0 || x >= columns) return 0;
    const auto mayBe = [&](std::int32_t row) {
        if (row < (found.from & ~7) || row > (found.to | 7)) return false;
        const std::size_t word =
            stride * static_cast<std::size_t>(row / 8) + static_cast<std::size_t>(x / kBits);
        return (eights[word] >> (x % kBits) & 1) != 0;
    };
    if (!mayBe(y) && !mayBe(y + 7)) return 0;
    unsigned bits = 0;
    for (std::int32_t i = 0; i < 8; ++i) bits |= static_cast<unsigned>(has(x, y + i)) << i;
    return bits;
}

}  // namespace streakfall
