#pragma once

#include "host/Image.h"
#include "hostapi/hostapi.h"

namespace standin {

// A colour in all three depths, of which a world takes its own.
struct FillColor {
    PF_Pixel bits8{};
    PF_Pixel16 bits16{};
    PF_PixelFloat float32{};
};
FillColor fillColor(const PF_Pixel& color);
FillColor fillColor(const PF_Pixel16& color);
FillColor fillColor(const PF_PixelFloat& color);

// The part of the rectangle that lies in the world; null means the whole world.
void fill(PF_EffectWorld& world, Depth depth, const PF_LRect* rect, const FillColor& color);

// Rectangles of one size, or null for whole worlds of one size; both within their worlds. False
// when they are not, since this host does not scale.
bool copy(const PF_EffectWorld& source, PF_EffectWorld& destination, Depth depth,
          const PF_LRect* sourceRect, const PF_LRect* destRect);

}  // namespace standin
