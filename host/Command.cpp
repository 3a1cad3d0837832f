#include "host/Command.h"

#include <atomic>

#include "host/Handles.h"

namespace standin {
namespace {

constexpr const char* kCommandNames[] = {
    "ABOUT",
    "GLOBAL_SETUP",
    "UNUSED_0",
    "GLOBAL_SETDOWN",
    "PARAMS_SETUP",
    "SEQUENCE_SETUP",
    "SEQUENCE_RESETUP",
    "SEQUENCE_FLATTEN",
    "SEQUENCE_SETDOWN",
    "DO_DIALOG",
    "FRAME_SETUP",
    "RENDER",
    "FRAME_SETDOWN",
    "USER_CHANGED_PARAM",
    "UPDATE_PARAMS_UI",
    "EVENT",
    "GET_EXTERNAL_DEPENDENCIES",
    "COMPLETELY_GENERAL",
    "QUERY_DYNAMIC_FLAGS",
    "AUDIO_RENDER",
    "AUDIO_SETUP",
    "AUDIO_SETDOWN",
    "ARBITRARY_CALLBACK",
    "SMART_PRE_RENDER",
    "SMART_RENDER",
};

// A number of its own for each checked-out definition of the process; it travels in the
// definition's unused member, so that a check-in is matched to its checkout.
A_long nextTicket() {
    static std::atomic<A_long> last{0};
    return ++last;
}

}  // namespace

std::string commandName(PF_Cmd command) {
    return command >= 0 && command < static_cast<PF_Cmd>(std::size(kCommandNames))
               ? kCommandNames[command]
               : "command " + std::to_string(command);
}

Command::Command(Host& host, Instance* instance) : host_(host), instance_(instance) {
    const HostOffer& offer = host.offer();
    in.inter = interactCallbacks();
    in.utils = services().utilCallbacks();
    in.effect_ref = &ref_;
    in.quality = PF_Quality_HI;
    in.version = offer.version;
    in.appl_id = offer.applId;
    in.num_params = host.global().numParams;
    in.time_step = 1;
    in.local_time_step = 1;
    in.time_scale = 24;
    in.downsample_x = {1, 1};
    in.downsample_y = {1, 1};
    in.pixel_aspect_ratio = {1, 1};
    in.pica_basicP = services().basicSuite();

    out.my_version = host.global().version;
    out.num_params = host.global().numParams;
    out.out_flags = host.global().outFlags;
    out.out_flags2 = host.global().outFlags2;
}

PF_Err Command::run(PF_Cmd command, PF_ParamDef** params, PF_LayerDef* output, void* extra) {
    host_.module().called(host_.services());
    running_ = command;
    const PF_Handle sequence = in.sequence_data ? in.sequence_data : out.sequence_data;
    handles::pin(sequence, 1);
    PF_Err code;
    try {
        code = host_.module().entry()(command, &in, &out, params, output, extra);
    } catch (...) {
        services().ledger().violation("an exception left the effect in " + commandName(command));
        code = PF_Err_INTERNAL_STRUCT_DAMAGED;
    }
    handles::pin(sequence, -1);
    if (command == PF_Cmd_GLOBAL_SETDOWN) {
        host_.module().setDown();
    }
    return code;
}

PF_Err Command::refuse(const std::string& call) {
    services().ledger().violation(call + " in " + commandName(running_));
    return PF_Err_INVALID_CALLBACK;
}

PF_Err Command::checkoutParam(A_long index, const Time& time, PF_ParamDef& definition) {
    if (!instance_ || running_ == PF_Cmd_UPDATE_PARAMS_UI) {
        return refuse("checkout of a parameter");
    }
    const PF_Err code =
        instance_->fillDefinition(index, time, {in.downsample_x, in.downsample_y}, definition);
    if (code) {
        services().ledger().violation("checkout of parameter " + std::to_string(index) + " in " +
                                      commandName(running_));
        return code;
    }
    definition.unused = nextTicket();
    const std::string label = std::to_string(index) + " in " + commandName(running_);
    checkedOut_[definition.unused] = label;
    services().ledger().lend(Loan::param, label);
    return PF_Err_NONE;
}

PF_Err Command::checkinParam(PF_ParamDef& definition) {
    const auto found = checkedOut_.find(definition.unused);
    if (found == checkedOut_.end()) {
        services().ledger().violation("check-in of a definition that is not checked out in " +
                                      commandName(running_));
        return PF_Err_BAD_CALLBACK_PARAM;
    }
    services().ledger().giveBack(Loan::param, found->second);
    checkedOut_.erase(found);
    // What was checked in is the host's again.
    definition = {};
    return PF_Err_NONE;
}

PF_Err Command::updateControl(A_long index, const PF_ParamDef& definition) {
    if (!instance_) {
        return refuse("update of a control");
    }
    return instance_->updateControl(index, definition);
}

PF_Err Command::cancelled() const {
    return host_.services()->cancelled() ? PF_Interrupt_CANCEL : PF_Err_NONE;
}

PF_Err Command::addParam(const PF_ParamDef&) { return refuse("add_param"); }

PF_Err Command::checkoutLayer(A_long, A_long, const PF_RenderRequest&, const LayerTime&,
                              PF_CheckoutResult&) {
    return refuse("checkout_layer");
}

PF_Err Command::checkoutLayerPixels(A_long, PF_EffectWorld**) {
    return refuse("checkout_layer_pixels");
}

PF_Err Command::checkinLayerPixels(A_long) { return refuse("checkin_layer_pixels"); }

PF_Err Command::checkoutOutput(PF_EffectWorld**) { return refuse("checkout_output"); }

}  // namespace standin
