// Draws a frame's lines, in list order, into the line buffer.
#pragma once

#include <algorithm>
#include <vector>

#include "effect/HostProgress.h"
#include "effect/StrokeSetup.h"
#include "lines/LineRecord.h"
#include "shareForLines/LineCanvas.h"
#include "shareForLines/LineTracer.h"

namespace streakfall {

// The host hears of the first line of every tenth part of the list, and may stop the drawing then
// with the code that is returned. Nothing is allocated from line to line but what the largest dab
// so far has need of.
template <class Depth>
[[nodiscard]] PF_Err drawLines(LineCanvas& canvas, Stroke<Depth>& stroke,
                               const ConvertedParams& params, const std::vector<LineRecord>& lines,
                               const HostProgress& progress) {
    const auto pen = framePen<Depth>(params.values);
    const JitterAmounts amounts = jitterAmounts(params);
    const std::size_t step = std::max<std::size_t>(1, lines.size() / 10);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const LineRecord& line = lines[i];
        stroke.thickness = line.thickness;
        jitterColor<Depth>(stroke.pen, pen, amounts, static_cast<std::uint32_t>(line.seed),
                           params.values.randomSeed);
        traceLine<Depth>(stroke, canvas, line);
        if (i % step != 0) continue;
        progress.report(static_cast<A_long>(20 + 8 * (i / step)));
        if (const PF_Err stop = progress.abort(); stop != PF_Err_NONE) return stop;
    }
    return PF_Err_NONE;
}

}  // namespace streakfall
