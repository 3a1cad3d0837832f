#include "share/util/AEWorldSuite.h"

#include "share/util/AEException.h"
#include "share/util/SuiteCache.h"

namespace AEUtil {

namespace {

struct WorldForm {
    A_long width, height;
    char clear;
    A_long pixelFormat;
};

PF_Err makeWorld(EffectWorldPtr& result, ScopedWorldSuite2& suite, const WorldForm& form) {
    PF_Err error = suite->PF_NewWorld(result.holder->effectRef, form.width, form.height, form.clear,
                                      form.pixelFormat, &result.holder->world);
    if (error == PF_Err_NONE) result.world = &result.holder->world;
    const SPErr releaseError = suite.release();
    return error != PF_Err_NONE ? error : releaseError;
}

PF_Err makeWorldOnOlderHost(EffectWorldPtr& result, const PF_WorldSuite1& suite,
                            const WorldForm& form) {
    PF_NewWorldFlags flags = form.clear != 0 ? PF_NewWorldFlag_CLEAR_PIXELS : PF_NewWorldFlag_NONE;
    if (form.pixelFormat == PF_PixelFormat_ARGB64) flags |= PF_NewWorldFlag_DEEP_PIXELS;
    const PF_Err error = suite.new_world(result.holder->effectRef, form.width, form.height, flags,
                                         &result.holder->world);
    if (error == PF_Err_NONE) result.world = &result.holder->world;
    return error;
}

bool olderHostCanMake(A_long pixelFormat) {
    return pixelFormat == PF_PixelFormat_ARGB32 || pixelFormat == PF_PixelFormat_ARGB64;
}

}  // namespace

EffectWorldPtr WorldSuite::newWorld(PF_ProgPtr effectRef, A_long width, A_long height, char clear,
                                    A_long pixelFormat) {
    EffectWorldPtr result(new WorldHolder{effectRef, {}, 0});
    SuiteCache* const suites = SuiteCache::global();
    if (result.holder == nullptr || suites == nullptr) return result;

    const WorldForm form{width, height, clear, pixelFormat};
    PF_Err error = PF_Err_NONE;
    if (ScopedWorldSuite2 suite(suites->basic()); suite) {
        error = makeWorld(result, suite, form);
    } else if (olderHostCanMake(pixelFormat)) {
        error = makeWorldOnOlderHost(result, suites->get<PF_WorldSuite1>(), form);
    }
    if (error != PF_Err_NONE) {
        throw AEException(error, ".\\share\\util\\AEWorldSuite", 151,
                          "AEUtil::EffectWorldPtr AEUtil::WorldSuite::newWorld(PF_ProgressInfo *, "
                          "long, long, char, long)");
    }
    return result;
}

}  // namespace AEUtil
