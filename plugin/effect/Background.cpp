#include "effect/Background.h"

#include "effect/WorldRect.h"
#include "share/util/SuiteCache.h"

namespace streakfall {

namespace {

// Zero bytes are transparent black in every depth, so the 8-bit colour serves all.
PF_Err clear(const RenderContext& context, AEUtil::SuiteCache& suites) {
    const PF_Pixel transparent{};
    const PF_Rect whole = wholeOf(*context.outputWorld);
    return suites.get<PF_FillMatteSuite2>().fill(context.inData->effect_ref, &transparent, &whole,
                                                 context.outputWorld);
}

PF_Err copyInput(const RenderContext& context, AEUtil::SuiteCache& suites) {
    const auto& transform = suites.get<PF_WorldTransformSuite1>();
    const auto copy = context.inData->quality == PF_Quality_HI ? transform.copy_hq : transform.copy;
    return copy(context.inData->effect_ref, context.inputWorld, context.outputWorld, nullptr,
                nullptr);
}

}  // namespace

PF_Err layBackground(const RenderContext& context) {
    // The state stands while a command runs; a render that got here without it has no suites.
    AEUtil::SuiteCache* const suites = AEUtil::SuiteCache::global();
    if (suites == nullptr) AEUtil::MissingSuite();
    return context.effectParams.clearBackground != 0 ? clear(context, *suites)
                                                     : copyInput(context, *suites);
}

}  // namespace streakfall
