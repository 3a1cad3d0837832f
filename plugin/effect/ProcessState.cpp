#include "effect/ProcessState.h"

#include <atomic>

#include "effect/CustomFilter.h"
#include "params/ParamTable.h"
#include "platform/Lock.h"
#include "share/util/PendingErrorList.h"
#include "share/util/SuiteCache.h"

namespace streakfall {

namespace {

constinit platform::Lock stateLock;
constinit std::atomic<BaseFilter*> effect{nullptr};

void takeDown() {
    delete effect.exchange(nullptr, std::memory_order_acq_rel);
    destroyParamTable();
    AEUtil::PendingErrorList::destroy();
    AEUtil::SuiteCache::tearDownGlobal();
}

PF_Err bringUp(const PF_InData* inData) {
    AEUtil::SuiteCache::setUpGlobal(inData->pica_basicP);
    // Without the host's suites every allocation gives null.
    if (AEUtil::SuiteCache::global() == nullptr) return PF_Err_OUT_OF_MEMORY;
    if (!AEUtil::PendingErrorList::create()) return PF_Err_OUT_OF_MEMORY;
    buildParamTable(inData);
    BaseFilter* const made = new CustomFilter;
    if (made == nullptr) return PF_Err_OUT_OF_MEMORY;
    effect.store(made, std::memory_order_release);
    return PF_Err_NONE;
}

// Takes down what a failed start left, whichever way it failed.
class StartGuard {
  public:
    ~StartGuard() {
        if (effectObject() == nullptr) takeDown();
    }
};

}  // namespace

PF_Err initialiseOnce(const PF_InData* inData) {
    if (effectObject() != nullptr) return PF_Err_NONE;
    const std::lock_guard lock(stateLock);
    if (effectObject() != nullptr) return PF_Err_NONE;
    const StartGuard guard;
    return bringUp(inData);
}

void shutDown() {
    const std::lock_guard lock(stateLock);
    takeDown();
}

BaseFilter* effectObject() noexcept { return effect.load(std::memory_order_acquire); }

}  // namespace streakfall
