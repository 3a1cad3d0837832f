// Every parameter value of one frame, raw as the host gives it.
//
// A plain record without pointers: whoever renders owns one, the parameter objects fill it, and
// nothing in it refers to the host once the parameters are checked in. A new one is all zero.
// Reading scales, converts and limits nothing: percents stay 0 to 100 and what is "16.16" stays
// fixed point; a render converts a copy of its own. The ranges are those the host is told; values
// from a settings file or an expression can lie outside.
#pragma once

#include <cstdint>

#include "hostapi/hostapi.h"

namespace streakfall {

struct FixedPoint {
    PF_Fixed x = 0, y = 0;  // 16.16
};

struct EffectParams {
    FixedPoint startPoint;                // layer pixels; origin of the line field
    FixedPoint endPoint;                  // layer pixels; gives the field's direction only
    std::uint8_t linkEndPoint = 0;        // the panel's link; no render reads it
    double opacity = 0;                   // percent, 0 to 100
    PF_Pixel color{};                     // before jitter; alpha is not used by the host
    double thickness = 0;                 // full-size pixels, 0 to 500
    double thicknessRandom = 0;           // percent, 0 to 500
    double offsetRandom = 0;              // percent of the length, 0 to 200
    double length = 0;                    // full-size pixels, -2000 to 2000
    double lengthRandom = 0;              // percent, 0 to 100
    double densityOfLines = 0;            // lines in 1000 pixels across the axis, 0 to 1000
    double densityRandom = 0;             // percent of a step, 0 to 100
    std::int32_t randomInterval = 0;      // frames, 0 to 1000; 0 freezes the field
    std::int32_t randomArray = 0;         // fields before they repeat, 0 to 10; 0 stands for 512
    std::int32_t randomSeed = 0;          // 0 to 10000; when not 0 it also varies the colours
    std::uint8_t clearBackground = 0;     // 0: the output starts as a copy of the input
    std::uint8_t enableTaper = 0;         // switch of the fan
    double taper = 0;                     // percent, -100 to 100
    double baseLength = 0;                // full-size pixels, 0 to 2000
    double archRate = 0;                  // percent, 1 to 200
    std::uint8_t fixBandForm = 0;         // switch
    double groupLines = 0;                // percent of the density, 0 to 100
    double linesRandom = 0;               // percent, 0 to 100
    double attraction = 0;                // percent, 0 to 100
    double groupOffsetRandom = 0;         // percent, 0 to 200
    double intervalRandom = 0;            // percent, 0 to 5000
    double offset = 0;                    // full-size pixels along the axis, -10000 to 10000
    double autoOffset = 0;                // full-size pixels a frame, -2000 to 2000
    std::uint8_t repeat = 0;              // switch
    double repeatInterval = 0;            // full-size pixels, 0 to 10000
    std::int32_t randomRepeatNum = 0;     // row patterns less one, 0 to 100
    std::uint8_t enableInOut = 0;         // switch of the ramps
    double startThickness = 0;            // percent of the full thickness, 0 to 100
    double startLength = 0;               // percent of the length, 0 to 100
    double endThickness = 0;              // percent of the full thickness, 0 to 100
    double endLength = 0;                 // percent of the length, 0 to 100
    std::uint8_t useStartEndOpacity = 0;  // switch of the opacity ramp
    double startOpacity = 0;              // percent, 0 to 100
    double endOpacity = 0;                // percent, 0 to 100
    double opacityCenterPosition = 0;     // percent along the line, 0 to 100
    PF_Fixed colorRandomH = 0;            // degrees, 16.16
    double colorRandomS = 0;              // percent, 0 to 100
    double colorRandomV = 0;              // percent, 0 to 100
    std::uint8_t enableWave = 0;          // switch
    double waveAmount = 0;                // full-size pixels, -1000 to 1000
    double waveAmountRandom = 0;          // percent, 0 to 100
    double waveLength = 0;                // full-size pixels, 1 to 1000
    double waveLengthRandom = 0;          // percent, 0 to 100
    double wavePhase = 0;                 // buffer pixels, never scaled, -10000 to 10000
    double wavePhaseRandom = 0;           // buffer pixels, -10000 to 10000
};

}  // namespace streakfall
