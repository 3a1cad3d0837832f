// The pen of a frame: what of the stroke is the same for all its lines.
#pragma once

#include "effect/ConvertedParams.h"
#include "shareForLines/canvas/PixelDepth.h"
#include "shareForLines/path/ColorJitter.h"
#include "shareForLines/path/Stroke.h"

namespace streakfall {

// "Color" and "Opacity" in the depth's form. Every line's jitter starts from this pen, so shifts
// never add up.
template <class Depth>
typename Depth::Pixel framePen(const EffectParams& p) {
    return {Depth::penAlpha(p.opacity), Depth::penColor(p.color.red),
            Depth::penColor(p.color.green), Depth::penColor(p.color.blue)};
}

JitterAmounts jitterAmounts(const ConvertedParams& params);

// Ramps, opacity and wave; thickness and pen are set line by line.
void setUpStroke(StrokeForm& stroke, const EffectParams& p);

}  // namespace streakfall
