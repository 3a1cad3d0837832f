#include "host/Host.h"

#include <stdexcept>

#include "host/Command.h"
#include "host/Services.h"

namespace standin {
namespace {

// Parameter setup: takes the definitions in order and tells which group each stands in.
class ParamSetup : public Command {
  public:
    ParamSetup(Host& host, std::vector<ParamInfo>& params)
        : Command(host, nullptr), params_(params) {}

    PF_Err addParam(const PF_ParamDef& definition) override {
        ParamInfo info = describe(definition);
        info.index = static_cast<A_long>(params_.size()) + 1;
        if (info.type == PF_Param_GROUP_END) {
            if (groups_.empty()) {
                return refuse("end of a group that was not begun");
            }
            groups_.pop_back();
        }
        info.group = groups_.empty() ? std::string() : groups_.back();
        if (info.type == PF_Param_GROUP_START) {
            groups_.push_back(info.name);
        }
        params_.push_back(std::move(info));
        return PF_Err_NONE;
    }

  private:
    std::vector<ParamInfo>& params_;
    std::vector<std::string> groups_;
};

}  // namespace

Host::Host(Module& module, HostOffer offer)
    : module_(module), services_(Services::open(offer, module.path())) {
    if (offer.callsBack) {
        faults().watch([this] { callBack(); });
    }
}

Host::~Host() {
    stop();
    faults().watch({});  // the services may live on with the module
}

// What the effect answers to the inner command is not looked at: at its start and its end it can
// only refuse.
void Host::callBack() {
    static thread_local bool within = false;
    if (within) {
        return;
    }
    within = true;
    send(PF_Cmd_ABOUT);
    within = false;
}

PF_Err Host::start() {
    if (started_) {
        return PF_Err_NONE;
    }
    started_ = true;
    module_.hostStarted();
    const PF_Err code = setUpGlobally();
    return code ? code : setUpParams();
}

PF_Err Host::setUpGlobally() {
    Command command(*this, nullptr);
    const PF_Err code = command.run(PF_Cmd_GLOBAL_SETUP);
    global_.version = command.out.my_version;
    global_.outFlags = command.out.out_flags;
    global_.outFlags2 = command.out.out_flags2;
    return code;
}

PF_Err Host::setUpParams() {
    params_.clear();
    ParamSetup command(*this, params_);
    const PF_Err code = command.run(PF_Cmd_PARAMS_SETUP);
    global_.numParams = command.out.num_params;
    if (!code && global_.numParams != static_cast<A_long>(params_.size()) + 1) {
        ledger().violation("the effect counts " + std::to_string(global_.numParams) +
                           " parameters and added " + std::to_string(params_.size()) +
                           " behind the input layer");
    }
    return code;
}

PF_Err Host::stop() {
    if (!started_) {
        return PF_Err_NONE;
    }
    started_ = false;
    return module_.hostStopsLast() ? send(PF_Cmd_GLOBAL_SETDOWN) : PF_Err{PF_Err_NONE};
}

const ParamInfo* Host::param(A_long id) const {
    for (const ParamInfo& info : params_) {
        if (info.id == id) {
            return &info;
        }
    }
    return nullptr;
}

const ParamInfo* Host::param(const std::string& paramName) const {
    for (const ParamInfo& info : params_) {
        if (info.hasValue() && info.name == paramName) {
            return &info;
        }
    }
    return nullptr;
}

std::string Host::about() {
    Command command(*this, nullptr);
    if (const PF_Err code = command.run(PF_Cmd_ABOUT)) {
        throw std::runtime_error("the effect answered ABOUT with code " + std::to_string(code));
    }
    return command.out.return_msg;
}

PF_Err Host::send(PF_Cmd cmd, void* extra) {
    return Command(*this, nullptr).run(cmd, nullptr, nullptr, extra);
}

const HostOffer& Host::offer() const { return services_->offer(); }
Faults& Host::faults() { return services_->faults(); }
Ledger& Host::ledger() { return services_->ledger(); }
DialogTalk& Host::dialog() { return services_->dialog(); }
void Host::cancel() { services_->cancelled() = true; }
void Host::clearCancel() { services_->cancelled() = false; }

}  // namespace standin
