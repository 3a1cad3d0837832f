#include "validate/FaultCodes.h"

namespace validate {
namespace {

using standin::CallKind;

constexpr PF_Err kNone = PF_Err_NONE;
constexpr PF_Err kNoMemory = PF_Err_OUT_OF_MEMORY;
constexpr PF_Err kDamaged = PF_Err_INTERNAL_STRUCT_DAMAGED;

// Memory for the effect's own objects is lost by exception; a block for the sequence data is asked
// for by a call whose code is the host's.
std::vector<PF_Err> codesWithoutHandle(const Fault& fault) {
    switch (fault.scene) {
        case Scene::sequenceSetup:
        case Scene::resetup:
            return {kNoMemory};
        case Scene::flatten:
            // The bytes are gathered first, then get their handle.
            return {fault.n == fault.total ? kNoMemory : kDamaged};
        case Scene::dialog:
            return {kNone, kDamaged};
        default:
            return {kDamaged};
    }
}

std::vector<PF_Err> codesWithoutLock(const Fault& fault) {
    switch (fault.scene) {
        case Scene::panel:
        case Scene::changed:
            return {kNone};
        case Scene::resetup:
            // Data that cannot be looked at may count as foreign, and foreign data is dropped.
            return {kNone, kDamaged};
        case Scene::dialog:
            return {kNone, kDamaged};
        default:
            return {kDamaged};
    }
}

// The newer world suite has an older one behind it.
std::vector<PF_Err> codesWithoutSuite(const Fault& fault) {
    if (fault.scene == Scene::dialog) return {kNone, kDamaged};
    if (fault.scene != Scene::frame) return {kDamaged};
    if (hostIsToBlame(fault)) return {kNone, kDamaged, PF_Err_BAD_CALLBACK_PARAM};
    return {kNone, kDamaged};
}

}  // namespace

const char* name(Scene scene) {
    switch (scene) {
        case Scene::start:
            return "start";
        case Scene::about:
            return "about";
        case Scene::sequenceSetup:
            return "sequence setup";
        case Scene::flatten:
            return "flatten";
        case Scene::resetup:
            return "resetup";
        case Scene::panel:
            return "panel update";
        case Scene::changed:
            return "changed parameter";
        case Scene::dialog:
            return "dialog";
        case Scene::dynamicFlags:
            return "dynamic flags";
        case Scene::frame:
            return "frame";
        case Scene::stop:
            return "stop";
    }
    return "";
}

bool hostIsToBlame(const Fault& fault) {
    return fault.scene == Scene::frame && fault.kind == CallKind::acquireSuite &&
           fault.depth == standin::Depth::float32;
}

bool canFail(CallKind kind) {
    return kind != CallKind::unlockHandle && kind != CallKind::disposeHandle &&
           kind != CallKind::disposeWorld;
}

std::vector<PF_Err> allowedCodes(const Fault& fault) {
    switch (fault.kind) {
        case CallKind::newHandle:
            return codesWithoutHandle(fault);
        case CallKind::lockHandle:
            return codesWithoutLock(fault);
        case CallKind::acquireSuite:
            return codesWithoutSuite(fault);
        case CallKind::releaseSuite:
            // One that was needed for a single question counts with it.
            if (fault.scene == Scene::frame) return {kNone, fault.injected};
            return {kNone};
        case CallKind::handleSize:
            return {kNone, kDamaged};
        case CallKind::checkoutParam:
        case CallKind::checkinParam:
            if (fault.scene == Scene::dynamicFlags) return {kNone};
            return {fault.injected};
        case CallKind::progress:
        case CallKind::updateParamUI:
        case CallKind::isRenderEngine:
        case CallKind::getPlatformData:
            return {kNone};
        default:
            return {fault.injected};
    }
}

}  // namespace validate
