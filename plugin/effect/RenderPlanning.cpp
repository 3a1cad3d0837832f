#include "effect/RenderPlanning.h"

#include <algorithm>

#include "share/util/SuiteCache.h"

namespace streakfall {

namespace {

bool isEmpty(const PF_LRect& rect) { return rect.left >= rect.right || rect.top >= rect.bottom; }

}  // namespace

void UnionRect(const PF_LRect& source, PF_LRect& destination) {
    if (isEmpty(destination)) {
        destination = source;
    } else if (!isEmpty(source)) {
        destination.left = std::min(destination.left, source.left);
        destination.top = std::min(destination.top, source.top);
        destination.right = std::max(destination.right, source.right);
        destination.bottom = std::max(destination.bottom, source.bottom);
    }
}

PF_Err QueryPixelFormat(const PF_InData* inData, const PF_EffectWorld* world,
                        PF_PixelFormat& format) {
    AEUtil::ScopedWorldSuite2 suite(inData->pica_basicP);
    if (!suite) {
        const bool deep = (world->world_flags & PF_WorldFlag_DEEP) != 0;
        format = deep ? PF_PixelFormat_ARGB64 : PF_PixelFormat_ARGB32;
        return PF_Err_NONE;
    }
    const PF_Err error = suite->PF_GetPixelFormat(world, &format);
    const SPErr releaseError = suite.release();
    return error != PF_Err_NONE ? error : releaseError;
}

}  // namespace streakfall
