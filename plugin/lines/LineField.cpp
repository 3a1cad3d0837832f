#include "lines/LineField.h"

#include <algorithm>
#include <cmath>

#include "lines/Convert.h"
#include "lines/RandomSequence.h"
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
// Far above the roundings of a turned line's coordinates, as a part of their size.
constexpr double kRoundingRoom = 1e-9;
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

// Places the rows along the axis. False when no row can touch the frame.
bool LineField::layRows(double lineLength, Rows& rows) {
    const double shift = lineLength * (0.5 * lengthRandom + offsetRandom);
    reach = farthestCorner() + lineLength + shift;
    double off = autoOffsetTotal + offset;
    if (!std::isfinite(reach) || !std::isfinite(off)) return false;
    std::int32_t firstCell = 0;
    if (!repeat) {
        if (std::fabs(off) > reach) return false;
        rows.pitch = 10.0 * reach;
        rows.pattern = 0;
    } else {
        rows.pitch = repeatInterval + lineLength;
        // Within the parameters' ranges the pitch is above 0.
        if (!(rows.pitch > 0.0)) return false;
        const std::int32_t patterns = std::clamp(repeatRandomCount, 0, 1 << 29) + 1;
        const double cycle = patterns * rows.pitch;
        if (off > reach) {
            off = off - cycle * std::trunc(off / cycle + 0.5);
        } else if (off < -reach) {
            off = off + cycle;
        }
        firstCell = truncToI32(std::ceil((reach + off) / rows.pitch));
        // The first row's pattern is not reduced; it lies behind the start point by the reach.
        rows.pattern = (patterns - 1) - (firstCell % patterns) + 1;
    }
    rows.x = off - firstCell * rows.pitch;
    rows.count = std::int64_t{truncToI32((reach - rows.x) / rows.pitch)} + 1;
    return rows.count > 0;
}

LineField::Slots LineField::laySlots() const {
    Slots slots{1000.0 / density * scale, 0.0, static_cast<std::int32_t>(prototypes.size())};
    if (!taperEnabled) return slots;
    const double w = slots.step * taper;
    const double v = taper > 0.0 ? slots.step - w : slots.step + w;
    slots.apex = ((0.0 - baseLength) * v) / w;
    slots.step = vectorAngle(w, baseLength);
    const bool hairFine = std::fabs(slots.step) < 0.001 * kRadiansPerDegree;
    slots.count = hairFine ? 4 * slots.count : kFanSlots;
    return slots;
}

LineField::Axis LineField::layAxis() const {
    const auto [sine, cosine] = sineCosine(vectorAngle(endY - startY, endX - startX));
    Axis axis{cosine, sine, HUGE_VAL, -HUGE_VAL, HUGE_VAL, -HUGE_VAL};
    double farthest = std::fabs(startX) + std::fabs(startY);
    for (const double x : {clipRect.left - startX, clipRect.right - startX}) {
        for (const double y : {clipRect.top - startY, clipRect.bottom - startY}) {
            const double axial = x * cosine + y * sine;
            const double lateral = y * cosine - x * sine;
            axis.axialFrom = std::min(axis.axialFrom, axial);
            axis.axialTo = std::max(axis.axialTo, axial);
            axis.lateralFrom = std::min(axis.lateralFrom, lateral);
            axis.lateralTo = std::max(axis.lateralTo, lateral);
            farthest += std::fabs(x) + std::fabs(y);
        }
    }
    const double room = 1.0 + farthest * kRoundingRoom;
    axis.axialFrom -= room;
    axis.axialTo += room;
    axis.lateralFrom -= room;
    axis.lateralTo += room;
    return axis;
}

// How many slots of a row half can touch the frame. Those behind them need not even be drawn from
// the stream, for every half starts a stream of its own. A group may move by any number of slots,
// and a fan's slots close up with the distance, so there it is all of them.
std::int32_t LineField::slotsWithin(const Axis& axis, const Slots& slots) const {
    if (taperEnabled || grouped()) return slots.count;
    const double farthest = std::max(std::fabs(axis.lateralFrom), std::fabs(axis.lateralTo));
    const double within =
        farthest / std::fabs(slots.step) + std::fabs(densityRandom) + kSlotsToSpare;
    return within < slots.count ? static_cast<std::int32_t>(within) : slots.count;
}

void LineField::generate(std::vector<LineRecord>& lines) {
    density = std::max(kMinDensity, density);
    const double lineLength = std::fabs(length);
    if (!(lineLength >= kMinLength)) return;

    Rows rows;
    if (!layRows(lineLength, rows)) return;
    const Axis axis = layAxis();
    Slots slots = laySlots();
    auto count = static_cast<std::int32_t>(prototypes.size());
    const std::int64_t workPerRow = 2 * (std::int64_t{count} + slots.count);
    const std::int64_t rowCount = std::min(rows.count, kMaxSlotWork / workPerRow);
    slots.count = slotsWithin(axis, slots);
    count = taperEnabled ? count : std::min(count, slots.count);
    const std::int32_t patterns = repeat ? std::clamp(repeatRandomCount, 0, 1 << 29) + 1 : 1;

    double x = rows.x;
    std::int32_t pattern = rows.pattern;
    for (std::int64_t row = 0; row < rowCount; ++row) {
        groupCarry = 0.0;
        std::int32_t seedWord = rowSeedWord(pattern, +1);
        const double half = buildPrototypes(lineLength, slots.step, count);
        runSlots(lines, slots, axis, x, 0.0 - half, slots.step, seedWord);

        seedWord = rowSeedWord(pattern, -1);
        buildPrototypes(lineLength, -slots.step, count);
        runSlots(lines, slots, axis, x, 0.0 - (half + slots.step), -slots.step, seedWord);

        pattern = (pattern + 1) % patterns;
        x = x + rows.pitch;
    }
}

}  // namespace streakfall
