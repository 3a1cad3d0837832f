#include "shareForLines/fast/thick/ThickDabs.h"

#include <algorithm>
#include <cmath>

#include "shareForLines/disc/CirclePath.h"
#include "shareForLines/disc/HollowRow.h"

// Rounding is one instruction there.
#include "shareForLines/simd/Begin.h"

namespace streakfall {
namespace {

constexpr std::int32_t kNeverInside = -(1 << 30);

std::int32_t pair(std::int32_t low, std::int32_t high) {
    return static_cast<std::int32_t>((static_cast<std::uint32_t>(high) << 16) |
                                     (static_cast<std::uint32_t>(low) & 0xFFFFu));
}
std::int32_t pairFrom(const Range& range, std::int32_t offset) {
    return pair(range.from + offset, range.to + offset);
}

// Rows to the top or bottom: trunc(r + 5) - 5 - |Y|.
std::int32_t hollowRowsOf(const Dab& dab) {
    return dab.hollow ? truncToI32(dab.radius + 5.0) - 5 - kWholeDepth : -1;
}
std::int32_t middleRowOf(const Dab& dab) { return truncToI32(std::floor(dab.y)); }

}  // namespace

ThickDabs::Placed ThickDabs::placeOne(const Dab& dab) const {
    const DabCentre c = quantiseCentre(dab.x, dab.y);
    const std::int32_t originX = steepAxis ? originMinor : originMajor;
    const std::int32_t originY = steepAxis ? originMajor : originMinor;
    const std::int32_t x = 16 * (c.xi - originX) + c.fx, y = 16 * (c.yi - originY) + c.fy;
    Placed placed;
    placed.centre = steepAxis ? pair(y, x) : pair(x, y);
    placed.major = static_cast<float>(steepAxis ? y : x) / 16.0f;
    placed.minor = static_cast<float>(steepAxis ? x : y) / 16.0f;
    const std::size_t before = at(last - 1);
    if (last > begin() && twinRadius[before] == dab.radius) {
        placed.limit = limit[before];
        placed.columnScale = columnScale[before];
        placed.columnBase = columnBase[before];
        return placed;
    }
    const double squared = dab.radius * dab.radius;
    placed.limit = static_cast<std::int32_t>(std::ceil(256.0 * squared));
    // (d + 1) 16 + 1/2 with d = ((u^2 + v^2) / 256 - r^2) / (2 r).
    constexpr double kFine = 4096.0;
    const double per = kFine / (32.0 * dab.radius);
    placed.columnScale = static_cast<float>(per);
    placed.columnBase = static_cast<float>(kFine * 16.5 + (placed.limit - 256.0 * squared) * per);
    return placed;
}

void ThickDabs::store(std::int32_t entry, const Placed& placed, const Dab& dab, std::int32_t pen) {
    const std::size_t i = at(entry);
    centre[i] = placed.centre;
    limit[i] = placed.limit;
    columnScale[i] = placed.columnScale;
    columnBase[i] = placed.columnBase;
    major[i] = placed.major;
    minor[i] = placed.minor;
    radius[i] = static_cast<float>(dab.radius);
    exactRadius[i] = twinRadius[i] = dab.radius;
    times[i] = 1;
    coverage[i] = tables.of(dab.radius);
    alpha[i] = pen;
    hollowRows[i] = hollowRowsOf(dab);
    middleRow[i] = middleRowOf(dab);
}

void ThickDabs::place(std::span<const Dab> dabs, std::span<const std::int32_t> alphas, bool steep) {
    steepAxis = steep;
    anyHollow = false;
    tables.clear();
    const Dab& middle = dabs[dabs.size() / 2];
    const auto originX = static_cast<std::int32_t>(std::floor(middle.x));
    const auto originY = static_cast<std::int32_t>(std::floor(middle.y));
    originMajor = steep ? originY : originX;
    originMinor = steep ? originX : originY;
    largest = 0.0;
    smallest = kMaxRadius;
    mostGrowth = 0.0;
    last = kBeyond;
    const Dab* before = nullptr;
    for (std::size_t n = 0; n < dabs.size(); ++n) {
        const Dab& dab = dabs[n];
        const Placed placed = placeOne(dab);
        anyHollow = anyHollow || dab.hollow;
        const std::size_t end = at(last);
        // A step longer than a pixel by rounding alone leaves two dabs on one spot.
        if (before != nullptr && placed.centre == centre[end - 1] &&
            placed.limit == limit[end - 1] && placed.columnScale == columnScale[end - 1] &&
            placed.columnBase == columnBase[end - 1] && hollowRowsOf(dab) == hollowRows[end - 1] &&
            middleRowOf(dab) == middleRow[end - 1] && alphas[n] == alpha[end - 1] &&
            times[end - 1] < 2 && std::fabs(dab.radius - before->radius) < 1e-9) {
            ++times[end - 1];
            twinRadius[end - 1] = dab.radius;
            before = &dab;
            continue;
        }
        largest = std::max(largest, dab.radius);
        smallest = std::min(smallest, dab.radius);
        if (before != nullptr) {
            mostGrowth = std::max(mostGrowth, std::fabs(dab.radius - before->radius));
        }
        store(last, placed, dab, alphas[n]);
        ++last;
        before = &dab;
    }
    const Dab &first = dabs.front(), &final = dabs.back();
    forward = steep ? final.y >= first.y : final.x >= first.x;
    if (!forward) reverse();
    std::int32_t count = 0;
    for (std::int32_t k = begin(); k < last; ++k) {
        if (k > begin() && (exactRadius[at(k)] != exactRadius[at(k - 1)] ||
                            twinRadius[at(k)] != exactRadius[at(k)])) {
            ++count;
        }
        changes[at(k)] = count;
    }
    std::fill(hasArcs.begin() + begin(), hasArcs.begin() + last, false);
    closeEnds();
    countPlaces();
}

void ThickDabs::countPlaces() {
    firstPlace = static_cast<std::int32_t>(std::floor(major[at(begin())]));
    std::int32_t entry = begin();
    places = std::min(static_cast<std::int32_t>(std::ceil(major[at(last - 1)])) - firstPlace + 1,
                      kCapacity + 2);
    for (std::int32_t p = 0; p < places; ++p) {
        while (entry < last && major[at(entry)] < static_cast<float>(firstPlace + p)) ++entry;
        entryAt[static_cast<std::size_t>(p)] = entry;
    }
}

void ThickDabs::reverse() {
    const auto turn = [this](auto& values) {
        std::reverse(values.begin() + begin(), values.begin() + last);
    };
    turn(centre);
    turn(limit);
    turn(columnScale);
    turn(columnBase);
    turn(major);
    turn(minor);
    turn(radius);
    turn(exactRadius);
    turn(twinRadius);
    turn(times);
    turn(coverage);
    turn(alpha);
    turn(hollowRows);
    turn(middleRow);
}

void ThickDabs::closeEnds() {
    const auto close = [this](std::int32_t entry, std::int32_t like) {
        const std::size_t i = at(entry), from = at(like);
        centre[i] = centre[from];
        limit[i] = kNeverInside;
        columnScale[i] = columnScale[from];
        columnBase[i] = columnBase[from];
        exactRadius[i] = exactRadius[from];
        twinRadius[i] = twinRadius[from];
        coverage[i] = coverage[from];
        changes[i] = changes[from];
        alpha[i] = alpha[from];
        hollowRows[i] = -1;
        middleRow[i] = 0;
        times[i] = 1;
        hasArcs[i] = true;
        minorFar[i] = minorNear[i] = majorFar[i] = majorNear[i] = pair(0, -1);
        extra[i] = once[i] = kNoPixel;
    };
    for (std::int32_t i = 0; i < kBeyond; ++i) {
        close(i, begin());
        close(last + i, last - 1);
    }
}

void ThickDabs::findArcs(std::int32_t entry) {
    const std::size_t i = at(entry);
    hasArcs[i] = true;
    const std::int32_t low = static_cast<std::int16_t>(centre[i] & 0xFFFF), high = centre[i] >> 16;
    const std::int32_t x16 = steepAxis ? high : low, y16 = steepAxis ? low : high;
    // The walk's fraction may be 16 sixteenths, which is the next pixel's 0.
    const std::int32_t x = x16 >> 4, y = y16 >> 4, fx = x16 & 15, fy = y16 & 15;
    const ArcEnds& ends = arcs.of({x, y, fx, fy, 0.0625 * fx, 0.0625 * fy}, exactRadius[i]);
    minorFar[i] = steepAxis ? pairFrom(ends.steepRight, y) : pairFrom(ends.flatBottom, x);
    minorNear[i] = steepAxis ? pairFrom(ends.steepLeft, y) : pairFrom(ends.flatTop, x);
    majorFar[i] = steepAxis ? pairFrom(ends.flatBottom, x) : pairFrom(ends.steepRight, y);
    majorNear[i] = steepAxis ? pairFrom(ends.flatTop, x) : pairFrom(ends.steepLeft, y);
    const auto placeOf = [&](const DabPixel& p) {
        const std::int32_t px = 16 * (x + p.x), py = 16 * (y + p.y);
        return steepAxis ? pair(py, px) : pair(px, py);
    };
    extra[i] = ends.isOdd ? placeOf(ends.extra) : kNoPixel;
    once[i] = ends.isOdd ? placeOf(ends.once) : kNoPixel;
}

}  // namespace streakfall

#include "shareForLines/simd/End.h"
