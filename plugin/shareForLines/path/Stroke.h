// Stroke: the pen of a render, built once and reused for every line.
//
// Its construction makes the two ramp curves; the frame flow writes the frame-wide fields, each
// line its pen and thickness. What tracing changes is set afresh at the start of the next line.
// Owner: the frame flow, as a local; one walk at a time.
#pragma once

#include <cstdint>

#include "shareForLines/canvas/PixelDepth.h"
#include "shareForLines/path/StrokeShape.h"
#include "shareForLines/path/WaveTable.h"

namespace streakfall {

// The form of a stroke: all of it that does not depend on the depth.
struct StrokeForm {
    // Throws AEUtil::AEException when a shape cannot be made.
    StrokeForm();
    StrokeForm(const StrokeForm&) = delete;
    StrokeForm& operator=(const StrokeForm&) = delete;

    std::int32_t CreateInShape(double bias);  // rises from 0 to 1; returns a host error code
    std::int32_t CreateOutShape(double bias);

    double thickness = 0;            // full width, pixels; set per line
    double opacityCenter = 0.5;      // place along the line where the factor is 1
    double startThicknessRatio = 1;  // radius at the start as a part of the full one, 0 to 1
    double endThicknessRatio = 1;
    double startOpacity = 1;  // opacity factor at the start
    double endOpacity = 1;
    bool inOutEnabled = false;
    double inLength = 0;  // of the in ramp, pixels
    double outLength = 0;
    bool waveEnabled = false;
    WaveTable wave;
    std::uint32_t waveState;
    StrokeShape inShape, outShape;
};

template <class Depth>
struct Stroke : StrokeForm {
    typename Depth::Pixel pen{};  // the line's colour; alpha is the pen alpha
};

}  // namespace streakfall
