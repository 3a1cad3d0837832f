// The callbacks that serve the running command: parameters, progress, platform data.
#include "host/Command.h"
#include "host/SuiteTables.h"

namespace standin {
namespace {

// Without a command to serve nothing can be done, not even kept in the books.
template <class Action>
PF_Err served(PF_ProgPtr ref, CallKind kind, Action action) {
    if (!ref) {
        return PF_Err_BAD_CALLBACK_PARAM;
    }
    Command& command = *ref->command;
    const PF_Err planned = command.onCall(kind);
    return planned ? planned : action(command);
}

PF_Err checkoutParam(PF_ProgPtr ref, PF_ParamIndex index, A_long time, A_long, A_u_long scale,
                     PF_ParamDef* definition) {
    return served(ref, CallKind::checkoutParam, [&](Command& command) {
        return command.checkoutParam(index, {time, scale ? scale : 1}, *definition);
    });
}

// A check-in that is made to fail has still come: the effect has done its part.
PF_Err checkinParam(PF_ProgPtr ref, PF_ParamDef* definition) {
    if (!ref) {
        return PF_Err_BAD_CALLBACK_PARAM;
    }
    const PF_Err planned = ref->command->onCall(CallKind::checkinParam);
    const PF_Err code = ref->command->checkinParam(*definition);
    return planned ? planned : code;
}

PF_Err addParam(PF_ProgPtr ref, PF_ParamIndex index, PF_ParamDef* definition) {
    return served(ref, CallKind::addParam, [&](Command& command) {
        if (index != -1) {
            command.services().ledger().violation("add_param elsewhere than at the end");
        }
        return command.addParam(*definition);
    });
}

PF_Err abortAsked(PF_ProgPtr ref) {
    return served(ref, CallKind::abort, [](Command& command) { return command.cancelled(); });
}

PF_Err progressMade(PF_ProgPtr ref, A_long current, A_long total) {
    return served(ref, CallKind::progress, [&](Command& command) {
        return command.reported(current, total) ? PF_Err{PF_Interrupt_CANCEL} : command.cancelled();
    });
}

PF_Err updateParamUI(PF_ProgPtr ref, PF_ParamIndex index, const PF_ParamDef* definition) {
    return served(ref, CallKind::updateParamUI,
                  [&](Command& command) { return command.updateControl(index, *definition); });
}

PF_Err platformData(PF_ProgPtr ref, PF_PlatDataID which, void* data) {
    return ref ? ref->command->services().platformData(which, data) : PF_Err_BAD_CALLBACK_PARAM;
}

}  // namespace

PF_InteractCallbacks interactCallbacks() {
    PF_InteractCallbacks callbacks{};
    callbacks.checkout_param = checkoutParam;
    callbacks.checkin_param = checkinParam;
    callbacks.add_param = addParam;
    callbacks.abort = abortAsked;
    callbacks.progress = progressMade;
    return callbacks;
}

void addCommandCallbacks(SuiteTables& tables) {
    tables.paramUtils.PF_UpdateParamUI = updateParamUI;
    tables.utils.get_platform_data = platformData;
}

}  // namespace standin
