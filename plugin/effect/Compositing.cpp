#include "effect/Compositing.h"

#include "effect/WorldRect.h"
#include "share/util/SuiteCache.h"

namespace streakfall {

PF_Err layLinesOverOutput(const RenderContext& context, const PF_EffectWorld& lineBuffer) {
    const PF_InData& in = *context.inData;
    const PF_Rect whole = wholeOf(lineBuffer);
    constexpr PF_CompositeMode kInFront{.xfer = PF_Xfer_IN_FRONT,
                                        .rand_seed = 0,
                                        .opacity = 255,
                                        .rgb_only = 0,
                                        .opacitySu = 32768};
    const PF_MaskWorld matte{
        .mask = *context.inputWorld, .offset = {0, 0}, .what_is_mask = PF_MaskFlag_NONE};

    // A cache of its own: the suite is held for this call only.
    AEUtil::SuiteCache suites(in.pica_basicP);
    return suites.get<PF_WorldTransformSuite1>().transfer_rect(
        in.effect_ref, in.quality, PF_MF_Alpha_STRAIGHT, in.field, &whole, &lineBuffer, &kInFront,
        &matte, 0, 0, context.outputWorld);
}

}  // namespace streakfall
