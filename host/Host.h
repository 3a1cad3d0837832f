#pragma once

#include <memory>
#include <string>
#include <vector>

#include "host/Faults.h"
#include "host/HostOffer.h"
#include "host/Ledger.h"
#include "host/Module.h"
#include "host/ParamInfo.h"
#include "hostapi/DialogWindow.h"
#include "hostapi/hostapi.h"

namespace standin {

class Services;

// What the effect announced at global setup, and the count it gave at parameter setup.
struct GlobalInfo {
    A_u_long version = 0;
    PF_OutFlags outFlags = 0;
    PF_OutFlags2 outFlags2 = 0;
    A_long numParams = 0;  // with the input layer
};

// How the user leaves the options dialog, and what was to be seen in it.
struct DialogTalk {
    A_long answer = kStandinDialogClose;
    long shown = 0;
    StandinDialogWindow seen{};  // as it stood when it was last run
};

// A host that plays one effect. Owner: the program. Several hosts may play one module on several
// threads at once, and frames of several instances of one host may be rendered on several threads
// at once, as a host with multi-frame rendering does; its other commands come from one thread at a
// time. Its services may be called from all (see Module::called: handles of the effect's allocator
// and the suites it keeps are in the books of the module's first caller).
class Host {
  public:
    explicit Host(Module& module, HostOffer offer = {});
    // Stops when it was started.
    ~Host();
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;

    // Global setup, then parameter setup; the first code that is not 0.
    PF_Err start();
    // Global setdown, unless another host on the module is still started.
    PF_Err stop();
    bool started() const { return started_; }

    const GlobalInfo& global() const { return global_; }
    // In host order, group starts and ends included. Empty before start.
    const std::vector<ParamInfo>& params() const { return params_; }
    // Null when there is none.
    const ParamInfo* param(A_long id) const;
    const ParamInfo* param(const std::string& name) const;

    // The about text, or throws std::runtime_error with the command's code.
    std::string about();
    // Any command, with records but without an instance; its code.
    PF_Err send(PF_Cmd command, void* extra = nullptr);

    const HostOffer& offer() const;
    Module& module() { return module_; }
    Faults& faults();
    Ledger& ledger();
    DialogTalk& dialog();

    // Safe from signal handlers and other threads: from now on abort and progress answer that the
    // user cancelled.
    void cancel();
    void clearCancel();

    const std::shared_ptr<Services>& services() const { return services_; }

  private:
    void callBack();
    PF_Err setUpGlobally();
    PF_Err setUpParams();

    Module& module_;
    std::shared_ptr<Services> services_;
    GlobalInfo global_;
    std::vector<ParamInfo> params_;
    bool started_ = false;
};

}  // namespace standin
