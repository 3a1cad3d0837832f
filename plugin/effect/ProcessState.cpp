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
constinit std::atomic<std::uintptr_t> changingThread{0};  // that holds stateLock; 0: none

// Holds the lock. A host that calls again from within a call of a start or a shutdown would wait
// for itself: it is to be asked for first.
class ChangingState {
  public:
    static bool onThisThread() { return changingThread == platform::threadNumber(); }
    ChangingState() { changingThread = platform::threadNumber(); }
    ~ChangingState() { changingThread = 0; }
    ChangingState(const ChangingState&) = delete;
    ChangingState& operator=(const ChangingState&) = delete;

  private:
    std::lock_guard<platform::Lock> lock_{stateLock};
};

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
    if (ChangingState::onThisThread()) return PF_Err_INTERNAL_STRUCT_DAMAGED;
    const ChangingState lock;
    if (effectObject() != nullptr) return PF_Err_NONE;
    const StartGuard guard;
    return bringUp(inData);
}

void shutDown() {
    if (ChangingState::onThisThread()) return;
    const ChangingState lock;
    takeDown();
}

BaseFilter* effectObject() noexcept { return effect.load(std::memory_order_acquire); }

}  // namespace streakfall
