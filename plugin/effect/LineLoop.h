// Draws a frame's lines, in list order, into the line buffer.
#pragma once

#include <algorithm>
#include <vector>

#include "effect/HostProgress.h"
#include "effect/StrokeSetup.h"
#include "lines/LineRecord.h"
#include "shareForLines/trace/LineCanvas.h"
#include "shareForLines/trace/LineTracer.h"

namespace streakfall {

// The host hears of the first line of every tenth part of the list, and may stop the drawing then
// with the code that is returned. Nothing is allocated from line to line but what the largest dab
// so far has need of.
template <class Depth>
[[nodiscard]] PF_Err drawLines(LineCanvas& canvas, Stroke<Depth>& stroke,
                               const ConvertedParams& params, const std::vector<LineRecord>& lines,
                               const HostProgress& progress) {
    const auto base = framePen<Depth>(params.values);
    const JitterAmounts amounts = jitterAmounts(params);
    const auto penOf = [&](std::size_t i) {
        auto pen = base;
        jitterColor<Depth>(pen, base, amounts, static_cast<std::uint32_t>(lines[i].seed),
                           params.values.randomSeed);
        return pen;
    };
    const std::size_t step = std::max<std::size_t>(1, lines.size() / 10);
    PF_Err stop = PF_Err_NONE;
    traceLines<Depth>(stroke, canvas, lines, penOf, [&](std::size_t i) {
        if (i % step != 0) return true;
        progress.report(static_cast<A_long>(20 + 8 * (i / step)));
        stop = progress.abort();
        return stop == PF_Err_NONE;
    });
    return stop;
}

}  // namespace streakfall
