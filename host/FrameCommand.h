#pragma once

#include <memory>

#include "host/Command.h"
#include "host/FrameRender.h"
#include "host/Worlds.h"

namespace standin {

// Layer coordinates: the picture's left top lies at the input's origin.
PF_LRect boundsOf(const FrameRequest& request);

// A command of a frame: in_data as the request says, and all calls noted in the result.
class FrameCommand : public Command {
  public:
    FrameCommand(Instance& instance, const FrameRequest& request, FrameResult& result);

    PF_Err onCall(CallKind kind) override;
    bool reported(A_long done, A_long total) override;
    PF_Err cancelled() const override;
    void judge(const TransferCall& call) override;
    void judge(const FillCall& call) override;
    void judge(const CopyCall& call) override;
    void transferring(const PF_EffectWorld& source, Depth depth) override;
    void transferred(double seconds) override;

    // The render itself; takes its time, its code and what it has to say.
    void runTimed(PF_Cmd command, PF_ParamDef** params, PF_LayerDef* output, void* extra);

  protected:
    void expect(bool right, const char* otherwise);

    const FrameRequest& request_;
    FrameResult& result_;
};

// The two worlds of a render: the part of the input, and the output over which junk lies.
class FrameWorlds {
  public:
    FrameWorlds(Host& host, const FrameRequest& request, const PF_LRect& inputRect,
                const PF_LRect& outputRect);

    PF_EffectWorld& input() { return input_->world(); }
    PF_EffectWorld& output() { return output_->world(); }

    // Looks for damage and takes the picture; the output's world is no more.
    void takeOutput(FrameResult& result);

  private:
    void lookForDamage(FrameResult& result) const;
    std::unique_ptr<WorldBuffer> make(Host& host, const PF_LRect& rect) const;

    Ledger& ledger_;
    bool watched_;  // see HostOffer::watchPixels
    const FrameRequest& request_;
    A_long left_, top_;  // of the input's part, in the picture
    std::unique_ptr<WorldBuffer> input_;
    std::unique_ptr<WorldBuffer> output_;
};

// Plan and, when there is something to render, render (SmartRoad.cpp).
void renderSmart(Instance& instance, const FrameRequest& request, FrameResult& result);

}  // namespace standin
