#include "lines/LineField.h"

#include <algorithm>
#include <cmath>

#include "lines/Convert.h"
#include "lines/RandomSequence.h"
#include "lines/RowWalk.h"
#include "lines/Trigonometry.h"

namespace streakfall {
namespace {

constexpr double kRadiansPerDegree = 0.017453292519943295;
constexpr std::int32_t kMinPrototypes = 900;
constexpr std::int32_t kFanSlots = 4000;
constexpr double kMinDensity = 0.1;
constexpr double kMinLength = 1e-06;
// A host world has at most 30000 pixels a side; the bound keeps a damaged size from asking for
// gigabytes of prototypes.
constexpr double kMaxDiagonal = 65536.0;
// Pixels; inside the ranges a row can touch the frame from 100,000 at most. Rows that reach farther
// than this are of lines that are too long to be drawn, or lie anywhere.
constexpr double kMaxReach = 1e6;
constexpr double kSlotsToSpare = 3.0;  // for the fraction and for the roundings of the slots' sum

double distance(double x0, double y0, double x1, double y1) {
    const double dx = x1 - x0, dy = y1 - y0;
    return std::sqrt(dx * dx + dy * dy);
}

}  // namespace

LineField::LineField(double left, double top, double right, double bottom, double margin,
                     double renderScale)
    : frameRect{left, top, right, bottom},
      clipRect{left - margin, top - margin, right + margin, bottom + margin},
      diagonal(distance(left, top, right, bottom)),
      reach(diagonal),
      scale(renderScale),
      state(seedInitial),
      intervalState(seedInitial) {
    const double rounded = std::ceil(std::min(diagonal, kMaxDiagonal));
    prototypeCount = std::max(kMinPrototypes, truncToI32(rounded));
    prototypes.resize(static_cast<std::size_t>(prototypeCount));
}

std::int32_t LineField::rowSeedWord(std::int32_t patternIndex, std::int32_t halfSign) {
    const std::uint32_t word = static_cast<std::uint32_t>(randomSeed) * 79u + intervalWord * 3u +
                               static_cast<std::uint32_t>(patternIndex) * 17u +
                               static_cast<std::uint32_t>(halfSign);
    state = startStream(word);
    return static_cast<std::int32_t>(word);
}

void intervalWordFor(LineField& field, std::int32_t frameIndex, std::int32_t randomInterval,
                     std::int32_t randomArray) {
    field.intervalWord = 0;
    if (randomInterval <= 0) return;
    const std::int32_t arrayLength = randomArray == 0 ? 512 : std::clamp(randomArray, 1, 512);
    const std::int32_t interval = frameIndex / randomInterval;
    if (interval < 1 || arrayLength <= 1) return;
    for (std::int32_t i = interval % arrayLength; i >= 0; --i) {
        field.intervalState = lcgStep(field.intervalState);
    }
    field.intervalWord = lcgWord(field.intervalState);
}

double LineField::farthestCorner() const {
    double farthest = diagonal;
    for (const double x : {frameRect.left, frameRect.right}) {
        for (const double y : {frameRect.top, frameRect.bottom}) {
            farthest = std::max(farthest, distance(startX, startY, x, y));
        }
    }
    return farthest;
}

std::int64_t LineField::patternCount() const {
    return repeat ? std::int64_t{std::max(repeatRandomCount, 0)} + 1 : 1;
}

// Places the rows along the axis. False when no row can touch the frame.
bool LineField::layRows(double lineLength, Rows& rows) {
    const double shift = lineLength * (0.5 * lengthRandom + offsetRandom);
    reach = farthestCorner() + lineLength + shift;
    double off = autoOffsetTotal + offset;
    if (!(reach <= kMaxReach) || !std::isfinite(off)) return false;
    std::int64_t firstCell = 0;
    if (!repeat) {
        if (std::fabs(off) > reach) return false;
        rows.pitch = 10.0 * reach;
        rows.pattern = 0;
    } else {
        rows.pitch = repeatInterval + lineLength;
        // Within the parameters' ranges the pitch is above 0.
        if (!(rows.pitch > 0.0)) return false;
        const double cycle = static_cast<double>(patternCount()) * rows.pitch;
        if (off > reach) {
            off = off - cycle * std::trunc(off / cycle + 0.5);
        } else if (off < -reach) {
            off = off + cycle;
        }
        if (!std::isfinite(off)) return false;
        firstCell = truncToI64(std::ceil((reach + off) / rows.pitch));
        // The first row's pattern is not reduced; it lies behind the start point by the reach.
        rows.pattern = (patternCount() - 1) - (firstCell % patternCount()) + 1;
    }
    rows.x = off - static_cast<double>(firstCell) * rows.pitch;
    rows.count = truncToI64((reach - rows.x) / rows.pitch) + 1;
    return rows.count > 0;
}

LineField::Slots LineField::laySlots(double lineLength) const {
    const auto [sine, cosine] = sineCosine(vectorAngle(endY - startY, endX - startX));
    const auto all = static_cast<std::int32_t>(prototypes.size());
    Slots slots{lineLength, 1000.0 / density * scale, 0.0, sine, cosine, all, all};
    if (!taperEnabled) {
        leaveOutFarSlots(slots);
        return slots;
    }
    const double w = slots.step * taper;
    const double v = taper > 0.0 ? slots.step - w : slots.step + w;
    slots.apex = ((0.0 - baseLength) * v) / w;
    slots.step = vectorAngle(w, baseLength);
    const bool hairFine = std::fabs(slots.step) < 0.001 * kRadiansPerDegree;
    slots.count = hairFine ? 4 * all : kFanSlots;
    return slots;
}

// Slots that lie across the axis farther away than the frame need not even be drawn from the
// stream, for every half starts a stream of its own. A group may move by any number of slots, so
// there none is left out.
void LineField::leaveOutFarSlots(Slots& slots) const {
    if (grouped()) return;
    double farthest = 0.0;
    for (const double x : {clipRect.left - startX, clipRect.right - startX}) {
        for (const double y : {clipRect.top - startY, clipRect.bottom - startY}) {
            farthest = std::max(farthest, std::fabs(y * slots.cosine - x * slots.sine));
        }
    }
    const double within =
        farthest / std::fabs(slots.step) + std::fabs(densityRandom) + kSlotsToSpare;
    if (within < slots.count) slots.prototypes = slots.count = static_cast<std::int32_t>(within);
}

RowPattern LineField::layPattern(std::int64_t pattern, const Slots& slots) {
    RowPattern laid;
    groupCarry = 0.0;
    const auto index = static_cast<std::int32_t>(pattern);
    std::int32_t seedWord = rowSeedWord(index, +1);
    const double half = buildPrototypes(slots.lineLength, slots.step, slots.prototypes);
    addHalf(laid, slots, 0.0 - half, slots.step, seedWord);

    seedWord = rowSeedWord(index, -1);
    buildPrototypes(slots.lineLength, -slots.step, slots.prototypes);
    addHalf(laid, slots, 0.0 - (half + slots.step), -slots.step, seedWord);
    laid.sort();
    return laid;
}

// The first row's pattern, then those that the rows behind it take in turn.
std::vector<RowPattern> LineField::layPatterns(const Rows& rows, const Slots& slots) {
    const std::int64_t slotsEach = 2 * (std::int64_t{slots.prototypes} + slots.count);
    const std::int64_t wanted = 1 + std::min(rows.count - 1, patternCount());
    const std::int64_t most = std::max<std::int64_t>(1, kMaxPreparedSlots / slotsEach);
    std::vector<RowPattern> patterns;
    patterns.push_back(layPattern(rows.pattern, slots));
    for (std::int64_t i = 1; i < std::min(wanted, most); ++i) {
        patterns.push_back(layPattern((rows.pattern + i) % patternCount(), slots));
    }
    return patterns;
}

namespace {

// Room for all lines at once: growing would need that of half as many more beside it.
void reserveLines(std::vector<LineRecord>& lines, const std::vector<RowPattern>& patterns,
                  double pitch, std::int64_t rowCount) {
    const auto inTurn = static_cast<double>(std::max<std::size_t>(2, patterns.size()) - 1);
    double most = 0.0;
    for (const RowPattern& pattern : patterns) {
        most += pattern.linesAtMost(inTurn * pitch, static_cast<double>(rowCount) / inTurn + 1.0);
    }
    const auto limit = static_cast<double>(LineField::kMaxLines);
    lines.reserve(lines.size() + static_cast<std::size_t>(most < limit ? most : limit));
}

// Where the next slot opens of the patterns behind the first row's.
double nextPlace(const std::vector<RowPattern>& patterns) {
    double place = HUGE_VAL;
    for (std::size_t i = 1; i < patterns.size(); ++i) {
        place = std::min(place, patterns[i].nextPlace());
    }
    return place;
}

}  // namespace

void LineField::generate(std::vector<LineRecord>& lines) {
    density = std::max(kMinDensity, density);
    const double lineLength = std::fabs(length);
    if (!(lineLength >= kMinLength)) return;

    Rows rows;
    if (!layRows(lineLength, rows)) return;
    const Slots slots = laySlots(lineLength);
    std::vector<RowPattern> patterns = layPatterns(rows, slots);

    const auto inTurn = static_cast<std::int64_t>(patterns.size()) - 1;
    // Fewer patterns than are wanted end the rows, where a value lies far past its range.
    if (inTurn < patternCount()) rows.count = std::min(rows.count, inTurn + 1);
    reserveLines(lines, patterns, rows.pitch, rows.count);
    std::int64_t steps = 0, rowsInVain = 0;
    for (RowWalk row(rows.x, rows.pitch, rows.count); row.more(); row.next()) {
        if (rowsInVain > inTurn) {
            // No pattern has an open slot.
            row.skipTo(nextPlace(patterns));
            if (!row.more()) break;
            rowsInVain = 0;
        }
        const std::int64_t index = row.row == 0 ? 0 : 1 + (row.row - 1) % inTurn;
        RowPattern& pattern = patterns[static_cast<std::size_t>(index)];
        const std::int64_t open = pattern.visitAt(row.x, [&](const RowSlot& slot) {
            LineRecord line;
            if (lines.size() < kMaxLines && place(slot, slots, row.x, line)) lines.push_back(line);
        });
        rowsInVain = open == 0 ? rowsInVain + 1 : 0;
        steps += 1 + open;
        if (lines.size() >= kMaxLines || steps >= kMaxSteps) break;
    }
}

}  // namespace streakfall
