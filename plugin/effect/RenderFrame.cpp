#include "effect/RenderFrame.h"

#include <vector>

#include "effect/Background.h"
#include "effect/Compositing.h"
#include "effect/ConvertedParams.h"
#include "effect/HostProgress.h"
#include "effect/LineLoop.h"
#include "effect/LineSynthesis.h"
#include "share/util/AEWorldSuite.h"

namespace streakfall {

namespace {

// Most fields stay below it, so their list never moves.
constexpr std::size_t kUsualLineCount = 1000;

AEUtil::EffectWorldPtr newLineBuffer(const RenderContext& context) {
    constexpr char kCleared = 1;
    return AEUtil::WorldSuite::newWorld(context.inData->effect_ref, context.inputWorld->width,
                                        context.inputWorld->height, kCleared, context.pixelFormat);
}

// A world without pixels, as one of no size may be, is not painted on.
PF_EffectWorld* paintable(const AEUtil::EffectWorldPtr& buffer) {
    return buffer.world->data != nullptr ? buffer.world : nullptr;
}

// The lines go into a buffer of their own, which is laid over the output once, when the last line
// is done: a stopped render leaves the bare background.
template <class Depth>
PF_Err drawAndComposite(const RenderContext& context, const ConvertedParams& params,
                        const std::vector<LineRecord>& lines, const HostProgress& progress) {
    const AEUtil::EffectWorldPtr buffer = newLineBuffer(context);
    if (buffer.world == nullptr) return PF_Err_INTERNAL_STRUCT_DAMAGED;
    LineCanvas canvas(context.inData, context.outData, paintable(buffer), buffer);
    Stroke<Depth> stroke;
    setUpStroke(stroke, params.values);

    PF_Err error = drawLines(canvas, stroke, params, lines, progress);
    if (error == PF_Err_NONE) error = layLinesOverOutput(context, *buffer.world);
    progress.report(100);
    return error;
}

template <class Depth>
PF_Err renderFrame(const RenderContext& context) {
    const HostProgress progress(*context.inData);
    const PF_Err backgroundError = layBackground(context);
    progress.report(10);
    if (backgroundError != PF_Err_NONE) return backgroundError;

    const FrameInfo frame = frameInfoOf(*context.inData, *context.inputWorld);
    const ConvertedParams params = convertParams(context.effectParams, frame);
    std::vector<LineRecord> lines;
    lines.reserve(kUsualLineCount);
    generateLines(params, frame, lines);
    progress.report(20);
    if (lines.empty()) return PF_Err_NONE;
    return drawAndComposite<Depth>(context, params, lines, progress);
}

}  // namespace

PF_Err RenderFrame8(const RenderContext& context) { return renderFrame<Depth8>(context); }
PF_Err RenderFrame16(const RenderContext& context) { return renderFrame<Depth16>(context); }
PF_Err RenderFrameFloat(const RenderContext& context) { return renderFrame<DepthFloat>(context); }

}  // namespace streakfall
