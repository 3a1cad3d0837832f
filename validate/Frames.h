#pragma once

#include <string>

#include "host/FrameRender.h"
#include "validate/Play.h"

namespace validate {

// The ways in which a host asks for a frame.
struct Way {
    standin::Depth depth;
    standin::Road road;
};

inline constexpr Way kWays[] = {
    {standin::Depth::bits8, standin::Road::smart},   {standin::Depth::bits16, standin::Road::smart},
    {standin::Depth::float32, standin::Road::smart}, {standin::Depth::bits8, standin::Road::legacy},
    {standin::Depth::bits16, standin::Road::legacy},
};

std::string name(const Way& way);

// A frame of a picture with structure in all channels; its left quarter is transparent, and half
// of the next.
standin::FrameRequest frameOf(const Way& way, int width = kSmallLayer.width,
                              int height = kSmallLayer.height);

// Values by name under which much is drawn: many lines, a wave, ramps, jitter, repeated rows.
enum class Dabs { small, large };
void storeBusyValues(Play& play, Dabs dabs);

// What the output shows before any line is laid over it.
standin::Image backgroundOf(Play& play, const standin::FrameRequest& request);

// In words where the pictures differ, empty when they do not.
std::string difference(const standin::Image& is, const standin::Image& wanted);

}  // namespace validate
