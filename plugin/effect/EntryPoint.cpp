// The module's one exported function.
#include <exception>
#include <type_traits>

#include "effect/ProcessState.h"
#include "share/util/AEException.h"
#include "share/util/PendingErrorList.h"

#if defined(_WIN32)
#define STREAKFALL_EXPORT __declspec(dllexport)
#else
#define STREAKFALL_EXPORT __attribute__((visibility("default")))
#endif

namespace {

using namespace streakfall;

// Turns every failure of `work` into a code: the host does not survive an exception. C++
// exceptions only; what the processor raises is not the effect's to swallow.
template <class Work>
PF_Err guarded(Work&& work) noexcept {
    try {
        return work();
    } catch (const AEUtil::AEException& failure) {
        return failure.code;
    } catch (const std::exception&) {
        return PF_Err_INTERNAL_STRUCT_DAMAGED;
    } catch (...) {
        return PF_Err_INTERNAL_STRUCT_DAMAGED;
    }
}

// A command starts without pending codes and leaves none, so that threads which come and go
// cannot fill the list. Those of a command from within which the host calls again are left to it.
class PendingErrorsOfCommand {
  public:
    explicit PendingErrorsOfCommand(std::size_t outer) : outer_(outer) {
        AEUtil::PendingErrorList::clear(outer_);
    }
    ~PendingErrorsOfCommand() { AEUtil::PendingErrorList::clear(outer_); }
    PF_Err first() const { return AEUtil::PendingErrorList::takeFirst(outer_); }

  private:
    std::size_t outer_;
};

}  // namespace

extern "C" STREAKFALL_EXPORT PF_Err EntryPointFunc(PF_Cmd cmd, PF_InData* inData,
                                                   PF_OutData* outData, PF_ParamDef** params,
                                                   PF_LayerDef* output, void* extra) {
    const std::size_t outer = AEUtil::PendingErrorList::count();
    const PF_Err startError = guarded([&] { return initialiseOnce(inData); });
    if (startError != PF_Err_NONE) return startError;

    return guarded([&] {
        const PendingErrorsOfCommand pending(outer);
        PF_Err error = PF_Err_NONE;
        if (BaseFilter* const effect = effectObject(); effect != nullptr) {
            error = effect->Dispatch(cmd, inData, outData, params, output, extra);
        }
        if (cmd == PF_Cmd_GLOBAL_SETDOWN) shutDown();
        return error != PF_Err_NONE ? error : pending.first();
    });
}

static_assert(std::is_same_v<decltype(&EntryPointFunc), PF_EntryPoint>);
