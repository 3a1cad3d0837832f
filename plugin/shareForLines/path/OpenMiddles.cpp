#include "shareForLines/path/OpenMiddles.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "shareForLines/path/PathLimits.h"

namespace streakfall {

namespace {

constexpr double kShift = 1.0 / 16.0;  // between two quantised centres, beyond the step, pixels

}  // namespace

double endMoves(double r, double growth, double depth, double x, double y) {
    const double offset = r - depth, farther = offset + y + kShift, narrow = r - growth;
    const double half2 = r * r - offset * offset, before2 = narrow * narrow - farther * farther;
    return x + kShift + std::sqrt(half2) - std::sqrt(std::max(before2, 0.0));
}

namespace {

constexpr double kLongestStep = 1.01;  // from dab to dab, pixels
// A pixel that came in with this step, or goes out with the next, is nearer to the circle than
// this, pixels: the step, growth, and what an arc plots within. Beyond it is by a quantised centre
// alone.
constexpr double kWithin = 4.2, kBeyond = 0.15;
constexpr double kMostGrowth = 0.9;  // of the radius, pixels a step; beyond it dabs grow backward
constexpr int kBins = 6;             // of a ramp
constexpr int kDirections = 24;      // of a wave
constexpr OpenStrips kAllStrips = UINT32_MAX;

struct Step {
    double x, y;  // pixels, 0 or more
};

// The dabs of a part of the line that have one end fast above a depth.
struct FastEnds {
    double least, most;  // radius
    double depth;        // rows deeper than this below the top are slow
};

// Of dabs from one radius to another. Those of a narrower dab are slower at the same depth. Nothing
// is added where none is fast.
void addFastEnds(std::vector<FastEnds>& all, double least, double most, double growth,
                 const Step& step) {
    const auto isFast = [&](double depth) {
        return endMoves(most, growth, depth, step.x, step.y) > kFarthestEnd;
    };
    if (most < kLargeRadius || !isFast(kLeastDepth)) return;
    double slow = most, fast = kLeastDepth;
    if (isFast(slow)) fast = slow;
    while (slow - fast > 0.5) {
        const double middle = 0.5 * (slow + fast);
        (isFast(middle) ? fast : slow) = middle;
    }
    all.push_back({least, most, slow});
}

// What comes in or goes out at the two sides of the dabs.
struct Ends {
    std::vector<FastEnds> in, out;
};

bool addRamp(Ends& ends, const HollowLine& line, const HollowLine::Ramp& ramp, bool rises,
             const Step& step) {
    if (!(ramp.length > 0.0) || !(ramp.thin < line.radius)) return true;
    const std::vector<ShapePoint>& curve = *line.curve;
    const std::size_t bin = (curve.size() + kBins - 1) / kBins;
    const double height = line.radius - ramp.thin;
    std::size_t first = 0;
    while (first + 1 < curve.size() && curve[first + 1].position < ramp.from) ++first;
    for (; first + 1 < curve.size(); first += bin) {
        const std::size_t last = std::min(first + bin, curve.size() - 1);
        double slope = 0.0;
        for (std::size_t i = first; i < last; ++i) {
            slope = std::max(slope, (curve[i + 1].value - curve[i].value) /
                                        (curve[i + 1].position - curve[i].position));
        }
        const double growth = kLongestStep * slope * height / ramp.length;
        const double least = ramp.thin + height * curve[first].value;
        const double most = ramp.thin + height * curve[last].value;
        if (most >= kLargeRadius && growth > kMostGrowth) return false;
        addFastEnds(ends.in, least, most, rises ? growth : 0.0, step);
        addFastEnds(ends.out, least, most, rises ? 0.0 : growth, step);
    }
    return true;
}

struct Direction {
    double x, y;
};

// The largest |y| of the normals whose part across the axis lies between two numbers. side: 1 for
// normals along the axis, where pixels come in, -1 for those against it.
double mostUpright(const Direction& u, double side, double from, double to) {
    const auto upright = [&](double c) {
        return std::fabs(side * std::sqrt(std::max(0.0, 1.0 - c * c)) * u.y + c * u.x);
    };
    const double pole = side * (u.y < 0.0 ? -u.x : u.x);
    if (pole >= from && pole <= to) return 1.0;
    return std::max(upright(from), upright(to));
}

// Whether an end may be fast for pixels between two distances from the axis. blur: of normals.
bool isFast(const std::vector<FastEnds>& ends, const Direction& u, double side, double from,
            double to, double blur) {
    return std::any_of(ends.begin(), ends.end(), [&](const FastEnds& dabs) {
        const double outer = dabs.most + kBeyond, inner = std::max(dabs.least - kWithin, 0.5);
        if (from > outer || to < -outer) return false;
        const double low = from < 0.0 ? from / inner : from / outer;
        const double high = to < 0.0 ? to / outer : to / inner;
        const double y =
            mostUpright(u, side, std::clamp(low, -1.0, 1.0), std::clamp(high, -1.0, 1.0));
        const double depth = dabs.least * (1.0 - std::min(1.0, y + blur)) - kBeyond;
        return depth <= dabs.depth;
    });
}

}  // namespace

OpenStrips stripsThatMayStayOpen(const HollowLine& line) {
    // The longest way of a step along each axis, in any direction of the pen.
    const double angle = std::atan2(std::fabs(line.uy), std::fabs(line.ux));
    const double flattest = std::max(0.0, angle - line.turn);
    const double steepest = std::min(std::acos(0.0), angle + line.turn);
    const Step step{kLongestStep * std::cos(flattest), kLongestStep * std::sin(steepest)};
    Ends ends;
    addFastEnds(ends.in, line.radius, line.radius, 0.0, step);
    ends.out = ends.in;
    if (!addRamp(ends, line, line.in, true, step) || !addRamp(ends, line, line.out, false, step)) {
        return kAllStrips;
    }
    if (ends.out.empty()) return 0;
    if (line.beginsHollow) return kAllStrips;
    if (ends.in.empty()) return 0;
    const double width = 2.0 * line.radius / kStrips;
    const auto openAlong = [&](const Direction& u, double blur) {
        OpenStrips open = 0;
        for (int i = 0; i < kStrips; ++i) {
            // The outermost strips take what lies beyond.
            const double from = (i - kStrips / 2) * width - (i == 0 ? kBeyond : 0.0);
            const double to = (i + 1 - kStrips / 2) * width + (i + 1 == kStrips ? kBeyond : 0.0);
            if (isFast(ends.in, u, 1.0, from, to, blur) &&
                isFast(ends.out, u, -1.0, from, to, blur)) {
                open |= OpenStrips{1} << i;
            }
        }
        return open;
    };
    if (line.turn == 0.0) return openAlong({line.ux, line.uy}, 0.0);
    // Of a curved way, what lies between where a pixel comes and goes is a chord, in a direction
    // that the pen takes as well.
    const double blur = line.turn / kDirections;
    for (int i = 0; i <= kDirections; ++i) {
        const double a = std::atan2(line.uy, line.ux) + line.turn * (2.0 * i / kDirections - 1.0);
        if (openAlong({std::cos(a), std::sin(a)}, blur) != 0) return kAllStrips;
    }
    return 0;
}

}  // namespace streakfall
