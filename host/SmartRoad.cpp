#include <algorithm>
#include <cstdlib>
#include <map>

#include "host/FrameCommand.h"

namespace standin {
namespace {

bool isEmpty(const PF_LRect& rect) { return rect.left >= rect.right || rect.top >= rect.bottom; }

bool within(const PF_LRect& inner, const PF_LRect& outer) {
    return isEmpty(inner) || (inner.left >= outer.left && inner.top >= outer.top &&
                              inner.right <= outer.right && inner.bottom <= outer.bottom);
}

PF_LRect common(const PF_LRect& one, const PF_LRect& other) {
    const PF_LRect rect{std::max(one.left, other.left), std::max(one.top, other.top),
                        std::min(one.right, other.right), std::min(one.bottom, other.bottom)};
    return isEmpty(rect) ? PF_LRect{} : rect;
}

PF_RenderRequest renderRequest(const FrameRequest& request) {
    PF_RenderRequest asked{};
    asked.rect = request.rect.value_or(boundsOf(request));
    asked.field = request.field;
    asked.channel_mask = PF_ChannelMask_ARGB;
    return asked;
}

// What a plan promised, and the data that the effect keeps with it. The host's once the plan is
// made; given back through the effect's deleter.
class Plan {
  public:
    Plan(Ledger& ledger) : ledger_(ledger) {}
    Plan(const Plan&) = delete;
    Plan& operator=(const Plan&) = delete;

    ~Plan() {
        if (!output.pre_render_data) {
            return;
        }
        try {
            if (output.delete_pre_render_data_func) {
                output.delete_pre_render_data_func(output.pre_render_data);
            } else {
                std::free(output.pre_render_data);
            }
        } catch (...) {
            ledger_.violation("an exception left the deleter of pre-render data");
        }
        ledger_.giveBack(Loan::preRenderData);
    }

    void adopt() {
        if (output.pre_render_data) {
            ledger_.lend(Loan::preRenderData);
        }
    }

    PF_PreRenderOutput output{};
    std::map<A_long, PF_LRect> layers;  // checked out, by checkout id

  private:
    Ledger& ledger_;
};

class PlanCommand : public FrameCommand {
  public:
    PlanCommand(Instance& instance, const FrameRequest& request, FrameResult& result, Plan& plan)
        : FrameCommand(instance, request, result), plan_(plan) {}

    void plan() {
        PF_PreRenderInput input{};
        input.output_request = renderRequest(request_);
        input.bitdepth = static_cast<A_short>(bitDepth(request_.picture().depth()));
        PF_PreRenderCallbacks callbacks{checkoutLayerCallback, guidMixIn};
        PF_PreRenderExtra extra{&input, &plan_.output, &callbacks};
        result_.planCode = run(PF_Cmd_SMART_PRE_RENDER, nullptr, nullptr, &extra);
        plan_.adopt();
        result_.code = result_.planCode;
        result_.message = out.return_msg;
        result_.resultRect = plan_.output.result_rect;
        result_.maxResultRect = plan_.output.max_result_rect;
        if (!result_.planCode) {
            checkRects(input.output_request.rect);
        }
    }

    PF_Err checkoutLayer(A_long index, A_long checkoutId, const PF_RenderRequest& asked,
                         const LayerTime& time, PF_CheckoutResult& answer) override {
        if (index != 0) {
            return refuse("checkout of a layer that is not the input");
        }
        expect(time.now == request_.currentTime && time.step == request_.timeStep &&
                   time.scale == request_.timeScale,
               "checkout of the input at another time than the frame's");
        result_.layerRequest = asked;
        const PF_LRect bounds = boundsOf(request_);
        answer = {};
        answer.result_rect = common(asked.rect, bounds);
        answer.max_result_rect = bounds;
        answer.par = request_.pixelAspectRatio;
        answer.ref_width = request_.picture().width();
        answer.ref_height = request_.picture().height();
        if (!plan_.layers.emplace(checkoutId, answer.result_rect).second) {
            services().ledger().violation("two layers under one checkout id");
        }
        return PF_Err_NONE;
    }

  private:
    static PF_Err checkoutLayerCallback(PF_ProgPtr ref, PF_ParamIndex index, A_long checkoutId,
                                        const PF_RenderRequest* asked, A_long time, A_long step,
                                        A_u_long scale, PF_CheckoutResult* answer) {
        const PF_Err planned = ref->command->onCall(CallKind::checkoutLayer);
        return planned ? planned
                       : ref->command->checkoutLayer(index, checkoutId, *asked, {time, step, scale},
                                                     *answer);
    }

    static PF_Err guidMixIn(PF_ProgPtr, A_u_long, const void*) { return PF_Err_NONE; }

    void checkRects(const PF_LRect& asked) {
        const PF_PreRenderOutput& output = plan_.output;
        if (!within(output.result_rect, asked) &&
            !(output.flags & PF_RenderOutputFlag_RETURNS_EXTRA_PIXELS)) {
            services().ledger().violation("the result is larger than what was asked for");
        }
        if (!within(output.result_rect, output.max_result_rect)) {
            services().ledger().violation("the result is larger than the largest result");
        }
    }

    Plan& plan_;
};

class SmartRenderCommand : public FrameCommand {
  public:
    SmartRenderCommand(Instance& instance, const FrameRequest& request, FrameResult& result,
                       Plan& plan, FrameWorlds& worlds)
        : FrameCommand(instance, request, result), plan_(plan), worlds_(worlds) {}

    void render() {
        PF_SmartRenderInput input{};
        input.output_request = renderRequest(request_);
        input.bitdepth = static_cast<A_short>(bitDepth(request_.picture().depth()));
        input.pre_render_data = request_.withholdPlanData ? nullptr : plan_.output.pre_render_data;
        PF_SmartRenderCallbacks callbacks{pixelsCallback, checkinCallback, outputCallback};
        PF_SmartRenderExtra extra{&input, &callbacks};
        runTimed(PF_Cmd_SMART_RENDER, nullptr, nullptr, &extra);
        // A layer that was not checked in goes back with the command, as hosts do it.
        for (; layersOut_ > 0; --layersOut_) {
            services().ledger().giveBack(Loan::layerPixels);
        }
    }

    PF_Err checkoutLayerPixels(A_long checkoutId, PF_EffectWorld** pixels) override {
        if (!plan_.layers.contains(checkoutId) || inputTaken_) {
            return refuse("checkout of layer pixels that were not planned, or a second one,");
        }
        inputTaken_ = true;
        ++layersOut_;
        services().ledger().lend(Loan::layerPixels);
        *pixels = request_.withholdInput ? nullptr : &worlds_.input();
        return PF_Err_NONE;
    }

    PF_Err checkinLayerPixels(A_long checkoutId) override {
        if (!plan_.layers.contains(checkoutId) || layersOut_ == 0) {
            return refuse("check-in of layer pixels that are not checked out");
        }
        --layersOut_;
        services().ledger().giveBack(Loan::layerPixels);
        return PF_Err_NONE;
    }

    PF_Err checkoutOutput(PF_EffectWorld** output) override {
        if (!inputTaken_) {
            return refuse("checkout of the output before any input");
        }
        *output = request_.withholdOutput ? nullptr : &worlds_.output();
        return PF_Err_NONE;
    }

  private:
    static PF_Err pixelsCallback(PF_ProgPtr ref, A_long checkoutId, PF_EffectWorld** pixels) {
        const PF_Err planned = ref->command->onCall(CallKind::checkoutLayerPixels);
        return planned ? planned : ref->command->checkoutLayerPixels(checkoutId, pixels);
    }

    // As with parameters, a check-in that is made to fail has still come.
    static PF_Err checkinCallback(PF_ProgPtr ref, A_long checkoutId) {
        const PF_Err planned = ref->command->onCall(CallKind::checkinLayerPixels);
        const PF_Err code = ref->command->checkinLayerPixels(checkoutId);
        return planned ? planned : code;
    }

    static PF_Err outputCallback(PF_ProgPtr ref, PF_EffectWorld** output) {
        const PF_Err planned = ref->command->onCall(CallKind::checkoutOutput);
        return planned ? planned : ref->command->checkoutOutput(output);
    }

    Plan& plan_;
    FrameWorlds& worlds_;
    bool inputTaken_ = false;
    int layersOut_ = 0;
};

void makePlan(Instance& instance, const FrameRequest& request, FrameResult& result, Plan& plan) {
    PlanCommand(instance, request, result, plan).plan();
}

}  // namespace

void renderSmart(Instance& instance, const FrameRequest& request, FrameResult& result) {
    Ledger& ledger = instance.host().ledger();
    for (int i = 0; i < request.discardedPlans; ++i) {
        Plan discarded(ledger);
        makePlan(instance, request, result, discarded);
    }
    Plan plan(ledger);
    makePlan(instance, request, result, plan);
    if (result.planCode || request.planOnly || isEmpty(result.resultRect)) {
        return;
    }
    // Without a layer checked out the input world is still there, but cannot be had.
    const PF_LRect inputRect =
        plan.layers.empty() ? boundsOf(request) : plan.layers.begin()->second;
    FrameWorlds worlds(instance.host(), request, inputRect, result.resultRect);
    SmartRenderCommand(instance, request, result, plan, worlds).render();
    worlds.takeOutput(result);
}

}  // namespace standin
