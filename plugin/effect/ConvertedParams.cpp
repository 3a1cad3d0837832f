#include "effect/ConvertedParams.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

#include "params/ParamRows.h"

namespace streakfall {

namespace {

static_assert(std::ranges::all_of(kParamRows, [](const ParamRow& row) {
    const bool converted = row.unit == Unit::pixels || row.unit == Unit::percent;
    return !converted || row.type == PF_Param_FLOAT_SLIDER;  // whose values are doubles
}));

// Points and the angle have members of their own beside the values.
void convertMember(EffectParams& values, const ParamRow& row, double scale) {
    if (row.unit != Unit::pixels && row.unit != Unit::percent) return;
    std::byte* const place = reinterpret_cast<std::byte*>(&values) + row.place.offset;
    double value;
    std::memcpy(&value, place, sizeof value);
    value = row.unit == Unit::pixels ? value * scale : value / 100.0;
    std::memcpy(place, &value, sizeof value);
}

// 2^-16, exactly: 16.16 fixed point to a double. Not the random scale, which is 1/65535.
double fromFixed(PF_Fixed value) { return static_cast<double>(value) * 1.52587890625e-05; }

double ratioOf(const PF_RationalScale& scale) {
    return static_cast<double>(scale.num) / static_cast<double>(scale.den);
}

}  // namespace

FrameInfo frameInfoOf(const PF_InData& inData, const PF_EffectWorld& inputWorld) {
    return {inputWorld.width,    inputWorld.height,   inputWorld.origin_x, inputWorld.origin_y,
            inData.downsample_x, inData.downsample_y, inData.current_time, inData.time_step};
}

double renderScaleOf(const FrameInfo& frame) {
    return std::min(ratioOf(frame.downsampleX), ratioOf(frame.downsampleY));
}

std::int32_t frameIndexOf(const FrameInfo& frame) {
    if (frame.timeStep == 0) return 0;
    // Wider than the operands: the lowest time over a step of -1 has no 32-bit quotient.
    const std::int64_t index = std::int64_t{frame.currentTime} / frame.timeStep;
    return static_cast<std::int32_t>(std::min<std::int64_t>(index, INT32_MAX));
}

ConvertedParams convertParams(const EffectParams& raw, const FrameInfo& frame) {
    ConvertedParams converted{.values = raw, .scale = renderScaleOf(frame)};
    for (const ParamRow& row : kParamRows) convertMember(converted.values, row, converted.scale);
    converted.startX = fromFixed(raw.startPoint.x) - frame.originX;
    converted.startY = fromFixed(raw.startPoint.y) - frame.originY;
    converted.endX = fromFixed(raw.endPoint.x) - frame.originX;
    converted.endY = fromFixed(raw.endPoint.y) - frame.originY;
    converted.hueAmount = fromFixed(raw.colorRandomH) / 360.0;
    return converted;
}

}  // namespace streakfall
