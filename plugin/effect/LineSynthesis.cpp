#include "effect/LineSynthesis.h"

#include <cmath>

#include "lines/LineField.h"

namespace streakfall {

namespace {

void fillGeometry(LineField& field, const ConvertedParams& params) {
    const EffectParams& p = params.values;
    field.startX = params.startX;
    field.startY = params.startY;
    field.endX = params.endX;
    field.endY = params.endY;
    field.length = p.length;
    field.lengthRandom = p.lengthRandom;
    field.offset = p.offset;
    field.offsetRandom = p.offsetRandom;
    field.thickness = p.thickness;
    field.thicknessRandom = p.thicknessRandom;
    field.density = p.densityOfLines;
    field.densityRandom = 4.0 * p.densityRandom;
}

void fillRowsAndGroups(LineField& field, const EffectParams& p) {
    field.repeat = p.repeat != 0;
    field.repeatRandomCount = field.repeat ? p.randomRepeatNum : 0;
    field.repeatInterval = p.repeatInterval;
    field.randomSeed = p.randomSeed;
    field.groupLines = p.groupLines;
    field.linesRandom = p.linesRandom;
    field.attraction = p.attraction;
    field.groupOffsetRandom = p.groupOffsetRandom;
    field.intervalRandom = p.intervalRandom;
}

void fillFan(LineField& field, const EffectParams& p) {
    const bool fixedBand = p.fixBandForm != 0;
    field.taperEnabled = p.enableTaper != 0 && p.taper != 0.0;
    field.taper = field.taperEnabled ? p.taper : 0.0;
    field.baseLength = p.baseLength;
    field.archRate = fixedBand ? 1.0 : p.archRate;
    field.bandMode = fixedBand ? LineField::kFixedBand : LineField::kArch;
}

// The only place where time enters the picture.
void fillTime(LineField& field, const EffectParams& p, std::int32_t frameIndex) {
    field.autoOffsetTotal = frameIndex * p.autoOffset;
    intervalWordFor(field, frameIndex, p.randomInterval, p.randomArray);
}

}  // namespace

void generateLines(const ConvertedParams& params, const FrameInfo& frame,
                   std::vector<LineRecord>& lines) {
    const EffectParams& p = params.values;
    if (frame.width <= 0 || frame.height <= 0 || !(p.densityOfLines > 0.0)) return;
    const double margin = std::abs(p.waveAmount) + p.thickness;
    LineField field(0.0, 0.0, frame.width, frame.height, margin, params.scale);
    fillGeometry(field, params);
    fillRowsAndGroups(field, p);
    fillFan(field, p);
    fillTime(field, p, frameIndexOf(frame));
    field.generate(lines);
}

}  // namespace streakfall
