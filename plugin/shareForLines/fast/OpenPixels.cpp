#include "shareForLines/fast/OpenPixels.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "shareForLines/disc/CirclePath.h"
#include "shareForLines/disc/HollowRow.h"
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

}  // namespace

// A dab as its rows are filled.
struct OpenPixels::Disc {
    double x, y, radius;
    bool hollow, large;
    DabCentre centre;
    std::int32_t limit;      // 1/256 pixels squared: inside below it
    std::int32_t wholeRows;  // rows from the middle to where all are filled whole, and some

    explicit Disc(const Dab& dab)
        : x(dab.x),
          y(dab.y),
          radius(dab.radius),
          hollow(dab.hollow && dab.radius >= kLargeRadius),
          large(dab.radius >= kLargeRadius),
          centre(quantiseCentre(dab.x, dab.y)),
          limit(static_cast<std::int32_t>(std::ceil(256.0 * (dab.radius * dab.radius)))),
          wholeRows(truncToI32(dab.radius + 5.0) - 5) {}

    // Canvas columns inside the circle in row y; none when from > to.
    Range insideOf(std::int32_t row) const {
        const std::int32_t v = 16 * (row - centre.yi) - centre.fy, level = limit - v * v;
        if (level <= 0) return kNone;
        const auto u = static_cast<std::int32_t>(std::sqrt(static_cast<double>(level - 1)));
        return {centre.xi - ((u - centre.fx) >> 4), centre.xi + ((u + centre.fx) >> 4)};
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

// What the dab leaves open of a row and the other one has not inside. False when it leaves nothing
// of it open.
bool OpenPixels::addRow(Words& set, const Disc& dab, const Disc* other, std::int32_t y) {
    std::int32_t more = 0, otherMore = 0;
    const Range row = dab.interiorOf(y, more);
    const Range open{row.from - more + kHollowRim, row.to + more - kHollowRim};
    if (row.empty() || open.empty()) return false;
    if (y < 0 || y >= rowCount) return true;
    const Range had = other != nullptr ? other->interiorOf(y, otherMore) : kNone;
    if (had.empty()) {
        add(set, open.from, open.to, y);
    } else {
        add(set, open.from, std::min(open.to, had.from - 1), y);
        add(set, std::max(open.from, had.to + 1), open.to, y);
    }
    return true;
}

void OpenPixels::addAll(Words& set, const Disc& dab) {
    if (!dab.hollow) return;
    const std::int32_t reach = dab.wholeRows - kWholeDepth;
    const std::int32_t from = std::max(dab.centre.yi - reach, 0);
    const std::int32_t to = std::min(dab.centre.yi + reach, rowCount - 1);
    for (std::int32_t y = from; y <= to; ++y) addRow(set, dab, nullptr, y);
}

// Rows of the dab, from its top and its bottom on, as deep as ends may be fast.
void OpenPixels::addEnds(Words& set, const Disc& dab, const Disc& other, double x, double y) {
    const double r = std::max(dab.radius, other.radius);
    const double growth = std::fabs(dab.radius - other.radius);
    const std::int32_t reach = dab.wholeRows - kWholeDepth;
    for (std::int32_t away = reach; away >= 0; --away) {
        const double depth = std::max(r - away - 2.0, kLeastDepth);
        if (endMoves(r, growth, std::min(depth, r), x, y) <= kFarthestEnd) return;
        addRow(set, dab, &other, dab.centre.yi - away);
        if (away > 0) addRow(set, dab, &other, dab.centre.yi + away);
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
    if (!before.large || !dab.large) return;
    const double r = std::max(before.radius, dab.radius);
    if (endMoves(r, std::fabs(dab.radius - before.radius), kLeastDepth, std::fabs(x),
                 std::fabs(y)) <= kFarthestEnd) {
        return;
    }
    if (dab.hollow) addEnds(in, dab, before, std::fabs(x), std::fabs(y));
    if (before.hollow) addEnds(out, before, dab, std::fabs(x), std::fabs(y));
}

void OpenPixels::find(StrokeForm& stroke, const LineRecord& line, std::int32_t width,
                      std::int32_t height) {
    clear();
    LineWalk walk(stroke, line);
    const LineWalk::Middles middles = walk.middles();
    everywhere = middles == LineWalk::Middles::kLeft;
    if (everywhere) found = {0, height - 1};
    if (everywhere || middles == LineWalk::Middles::kPainted) return;
    start(width, height);
    walk.keepTo(width, height);
    Dab dab;
    if (!walk.next(dab)) return;
    Disc before(dab);
    addAll(in, before);
    bool hollow = before.hollow;
    while (walk.next(dab)) {
        const Disc now(dab);
        addStep(before, now);
        before = now;
        hollow = hollow || now.hollow;
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
    unsigned bits = 0;
    for (std::int32_t i = 0; i < 8; ++i) bits |= static_cast<unsigned>(has(x, y + i)) << i;
    return bits;
}

}  // namespace streakfall
