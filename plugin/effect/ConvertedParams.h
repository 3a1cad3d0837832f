// The parameter values of one frame, brought from the host's units to those of drawing.
#pragma once

#include <cstdint>

#include "params/EffectParams.h"

namespace streakfall {

// What the picture depends on besides the parameters.
struct FrameInfo {
    std::int32_t width = 0, height = 0;     // of the input world
    std::int32_t originX = 0, originY = 0;  // of the input world, in layer pixels
    PF_RationalScale downsampleX{1, 1}, downsampleY{1, 1};
    std::int32_t currentTime = 0, timeStep = 1;
};

FrameInfo frameInfoOf(const PF_InData& inData, const PF_EffectWorld& inputWorld);

// The smaller of the two downsample ratios: lengths follow the stronger reduction on both axes.
// The pixel aspect ratio plays no part; a frame is drawn in the square geometry of its buffer.
double renderScaleOf(const FrameInfo& frame);

// The frame's number, cut toward zero. A time step of 0, which a host may give, counts as frame 0.
std::int32_t frameIndexOf(const FrameInfo& frame);

struct ConvertedParams {
    // Lengths in buffer pixels at the render scale, percents as parts of one; the density, the
    // wave phases, the colour, integers and switches as they were. The points and the hue stand
    // below.
    EffectParams values;
    double startX = 0, startY = 0;  // buffer coordinates
    double endX = 0, endY = 0;
    double hueAmount = 0;  // part of a full turn
    double scale = 1;      // render scale
};

ConvertedParams convertParams(const EffectParams& raw, const FrameInfo& frame);

}  // namespace streakfall
