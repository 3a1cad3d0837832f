#pragma once

#include <map>
#include <string>

#include "host/Image.h"
#include "host/Instance.h"
#include "host/Services.h"
#include "hostapi/hostapi.h"

namespace standin {
class Command;
}

// What an effect_ref points to: one for each command.
struct PF_ProgressInfo {
    standin::Command* command;
};

namespace standin {

// What the effect says in a call on worlds, as it came.
struct TransferCall {
    PF_Quality quality;
    PF_Field field;
    const PF_Rect* sourceRect;  // null: all of it
    const PF_EffectWorld& source;
    const PF_CompositeMode& mode;
    const PF_MaskWorld* mask;  // null: none
    A_long destX, destY;
};
struct LayerTime {
    A_long now, step;  // in parts of a second
    A_u_long scale;    // how many to a second
};
struct FillCall {
    const PF_Rect* rect;  // null: all of it
    const PF_EffectWorld& world;
};
struct CopyCall {
    enum class Way { any, plain, highQuality };
    Way way;
    const PF_Rect* sourceRect;  // null: all of it
    const PF_Rect* destRect;    // likewise
    const PF_EffectWorld& source;
    const PF_EffectWorld& destination;
};

// "SMART_RENDER" and so on.
std::string commandName(PF_Cmd command);

// One command on its way through the effect: its records, and what its callbacks do. Owner: the
// caller's stack; one thread.
class Command {
  public:
    // Records as every command has them; the caller changes what is special before run. Without an
    // instance there are no parameters to check out.
    Command(Host& host, Instance* instance);
    virtual ~Command() = default;
    Command(const Command&) = delete;
    Command& operator=(const Command&) = delete;

    // Calls the effect; its code. An exception that leaves the entry point is a violation and
    // answers 512. What the effect left checked out stays in the books under this command's name.
    PF_Err run(PF_Cmd command, PF_ParamDef** params = nullptr, PF_LayerDef* output = nullptr,
               void* extra = nullptr);

    PF_InData in{};
    PF_OutData out{};

    // --- callbacks ------------------------------------------------------------------------------
    Services& services() { return *host_.services(); }
    // Counts a call; its planned code or 0.
    virtual PF_Err onCall(CallKind kind) { return services().faults().onCall(kind); }

    PF_Err checkoutParam(A_long index, const Time& time, PF_ParamDef& definition);
    PF_Err checkinParam(PF_ParamDef& definition);
    PF_Err updateControl(A_long index, const PF_ParamDef& definition);
    virtual PF_Err cancelled() const;

    // In commands where the host takes no such call it is a violation.
    virtual PF_Err addParam(const PF_ParamDef& definition);
    virtual PF_Err checkoutLayer(A_long index, A_long checkoutId, const PF_RenderRequest& request,
                                 const LayerTime& time, PF_CheckoutResult& result);
    virtual PF_Err checkoutLayerPixels(A_long checkoutId, PF_EffectWorld** pixels);
    virtual PF_Err checkinLayerPixels(A_long checkoutId);
    virtual PF_Err checkoutOutput(PF_EffectWorld** output);

    // Looks at the arguments of a call on worlds that is about to be carried out: what a picture
    // would not show, a host may still act upon. What is wrong goes to the books.
    virtual void judge(const TransferCall&) {}
    virtual void judge(const FillCall&) {}
    virtual void judge(const CopyCall&) {}

    // Told before the call is carried out. True: the user cancels.
    virtual bool reported(A_long, A_long) { return false; }
    virtual void transferring(const PF_EffectWorld&, Depth) {}
    virtual void transferred(double) {}

  protected:
    Host& host() { return host_; }
    PF_Err refuse(const std::string& call);

  private:
    Host& host_;
    Instance* instance_;
    PF_ProgressInfo ref_{this};
    PF_Cmd running_ = PF_Cmd_UNUSED_0;
    std::map<A_long, std::string> checkedOut_;  // by the number in the definition
};

}  // namespace standin
