#include "effect/StrokeSetup.h"

#include <algorithm>
#include <cmath>

#include "lines/RandomSequence.h"

namespace streakfall {

namespace {

// The ramps follow the "Length" parameter, not the varied length of a line.
void setUpRamps(StrokeForm& stroke, const EffectParams& p) {
    const bool enabled = p.enableInOut != 0;
    const double length = std::abs(p.length);
    stroke.inOutEnabled = enabled;
    stroke.startThicknessRatio = enabled ? std::clamp(p.startThickness, 0.0, 1.0) : 1.0;
    stroke.endThicknessRatio = enabled ? std::clamp(p.endThickness, 0.0, 1.0) : 1.0;
    stroke.inLength = enabled ? p.startLength * length : 0.0;
    stroke.outLength = enabled ? p.endLength * length : 0.0;
}

void setUpOpacity(StrokeForm& stroke, const EffectParams& p) {
    const bool enabled = p.useStartEndOpacity != 0;
    stroke.startOpacity = enabled ? p.startOpacity : 1.0;
    stroke.endOpacity = enabled ? p.endOpacity : 1.0;
    stroke.opacityCenter = enabled ? p.opacityCenterPosition : 0.5;
}

void setUpWave(StrokeForm& stroke, const EffectParams& p) {
    stroke.waveEnabled = p.enableWave != 0 && p.waveAmount != 0.0;
    stroke.waveState = seedInitial;
    stroke.wave.amount = p.waveAmount;
    stroke.wave.amountRandom = p.waveAmountRandom;
    stroke.wave.wavelength = std::max(1.0, p.waveLength);
    stroke.wave.wavelengthRandom = p.waveLengthRandom;
    stroke.wave.phase = p.wavePhase;
    stroke.wave.phaseRandom = p.wavePhaseRandom;
}

}  // namespace

JitterAmounts jitterAmounts(const ConvertedParams& params) {
    return {.hue = params.hueAmount,
            .saturation = params.values.colorRandomS,
            .value = params.values.colorRandomV};
}

void setUpStroke(StrokeForm& stroke, const EffectParams& p) {
    stroke.thickness = p.thickness;
    setUpRamps(stroke, p);
    setUpOpacity(stroke, p);
    setUpWave(stroke, p);
}

}  // namespace streakfall
