#include "params/HostQuestions.h"

#include "share/util/SuiteCache.h"

namespace streakfall {

bool isRenderEngine(const PF_InData* inData) {
    if (inData->appl_id != kAppID_FXTC) return false;
    AEUtil::SuiteCache suites(inData->pica_basicP);
    PF_Boolean renderEngine = 0;
    suites.get<PFAppSuite4>().PF_IsRenderEngine(&renderEngine);
    return renderEngine != 0;
}

bool isOldHost(const PF_InData* inData) {
    const PF_SpecVersion& version = inData->version;
    return inData->appl_id == kAppID_FXTC &&
           (version.major < 12 || (version.major == 12 && version.minor < 12));
}

}  // namespace streakfall
