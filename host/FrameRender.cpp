#include "host/FrameRender.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <map>
#include <stdexcept>

#include "host/Command.h"
#include "host/Worlds.h"

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

// Layer coordinates: the picture's left top lies at the input's origin.
PF_LRect boundsOf(const FrameRequest& request) {
    return {request.originX, request.originY, request.originX + request.input.width(),
            request.originY + request.input.height()};
}

PF_RenderRequest renderRequest(const FrameRequest& request) {
    PF_RenderRequest asked{};
    asked.rect = request.rect.value_or(boundsOf(request));
    asked.field = request.field;
    asked.channel_mask = PF_ChannelMask_ARGB;
    return asked;
}

// A command of a frame: in_data as the request says, and all calls noted in the result.
class FrameCommand : public Command {
  public:
    FrameCommand(Instance& instance, const FrameRequest& request, FrameResult& result)
        : Command(instance.host(), &instance), request_(request), result_(result) {
        instance.describeTo(*this);
        in.quality = request.quality;
        in.field = request.field;
        in.current_time = request.currentTime;
        in.time_step = request.timeStep;
        in.local_time_step = request.timeStep;
        in.time_scale = request.timeScale;
        in.total_time = request.totalTime;
        in.downsample_x = request.downsampleX;
        in.downsample_y = request.downsampleY;
        in.pixel_aspect_ratio = request.pixelAspectRatio;
        in.extent_hint = {0, 0, request.input.width(), request.input.height()};
    }

    PF_Err onCall(CallKind kind) override {
        result_.calls.push_back(kind);
        return Command::onCall(kind);
    }

    bool reported(A_long done, A_long total) override {
        result_.progress.push_back(done);
        return request_.onProgress && request_.onProgress(done, total);
    }

    void transferring(const PF_EffectWorld& source, Depth depth) override {
        if (request_.onTransfer) {
            request_.onTransfer(source, depth);
        }
    }

    void transferred(double seconds) override { result_.transferSeconds += seconds; }

    // The render itself; takes its time, its code and what it has to say.
    void runTimed(PF_Cmd command, PF_ParamDef** params, PF_LayerDef* output, void* extra) {
        const auto start = std::chrono::steady_clock::now();
        result_.code = run(command, params, output, extra);
        const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
        result_.renderSeconds = taken.count();
        result_.message = out.return_msg;
        result_.rendered = true;
    }

  protected:
    const FrameRequest& request_;
    FrameResult& result_;
};

// The two worlds of a render: the part of the input, and the output over which junk lies.
class FrameWorlds {
  public:
    FrameWorlds(Host& host, const FrameRequest& request, const PF_LRect& inputRect,
                const PF_LRect& outputRect)
        : ledger_(host.ledger()),
          request_(request),
          left_(inputRect.left - request.originX),
          top_(inputRect.top - request.originY),
          input_(make(host, inputRect)),
          output_(make(host, outputRect)) {
        input_->load(request.input, left_, top_);
    }

    PF_EffectWorld& input() { return input_->world(); }
    PF_EffectWorld& output() { return output_->world(); }

    void takeOutput(FrameResult& result) {
        if (!input_->holds(request_.input, left_, top_)) {
            ledger_.violation("the effect changed the input's pixels");
        }
        if (!input_->marginsIntact() || !output_->marginsIntact()) {
            ledger_.violation("the effect wrote outside the pixels of the input or the output");
        }
        result.output = output_->toImage();
        result.unwritten = output_->untouchedPixels();
    }

  private:
    std::unique_ptr<WorldBuffer> make(Host& host, const PF_LRect& rect) const {
        auto buffer = WorldBuffer::make(rect.right - rect.left, rect.bottom - rect.top,
                                        request_.input.depth(), host.offer(), false);
        if (!buffer) {
            throw std::bad_alloc();
        }
        PF_EffectWorld& world = buffer->world();
        world.origin_x = rect.left;
        world.origin_y = rect.top;
        world.pix_aspect_ratio = request_.pixelAspectRatio;
        return buffer;
    }

    Ledger& ledger_;
    const FrameRequest& request_;
    A_long left_, top_;  // of the input's part, in the picture
    std::unique_ptr<WorldBuffer> input_;
    std::unique_ptr<WorldBuffer> output_;
};

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
        input.bitdepth = static_cast<A_short>(bitDepth(request_.input.depth()));
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
                         PF_CheckoutResult& answer) override {
        if (index != 0) {
            return refuse("checkout of a layer that is not the input");
        }
        result_.layerRequest = asked;
        const PF_LRect bounds = boundsOf(request_);
        answer = {};
        answer.result_rect = common(asked.rect, bounds);
        answer.max_result_rect = bounds;
        answer.par = request_.pixelAspectRatio;
        answer.ref_width = request_.input.width();
        answer.ref_height = request_.input.height();
        if (!plan_.layers.emplace(checkoutId, answer.result_rect).second) {
            services().ledger().violation("two layers under one checkout id");
        }
        return PF_Err_NONE;
    }

  private:
    static PF_Err checkoutLayerCallback(PF_ProgPtr ref, PF_ParamIndex index, A_long checkoutId,
                                        const PF_RenderRequest* asked, A_long, A_long, A_u_long,
                                        PF_CheckoutResult* answer) {
        const PF_Err planned = ref->command->onCall(CallKind::checkoutLayer);
        return planned ? planned : ref->command->checkoutLayer(index, checkoutId, *asked, *answer);
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
        input.bitdepth = static_cast<A_short>(bitDepth(request_.input.depth()));
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

void renderLegacy(Instance& instance, const FrameRequest& request, FrameResult& result) {
    const PF_LRect bounds = boundsOf(request);
    FrameWorlds worlds(instance.host(), request, bounds, bounds);
    const Time time{request.currentTime, request.timeScale};
    ParamArray params(instance, instance.host().global().numParams, time,
                      {request.downsampleX, request.downsampleY});
    params.inputLayer() = worlds.input();
    FrameCommand(instance, request, result)
        .runTimed(PF_Cmd_RENDER, params.pointers(), &worlds.output(), nullptr);
    worlds.takeOutput(result);
}

}  // namespace

FrameResult renderFrame(Instance& instance, const FrameRequest& request) {
    if (request.input.empty()) {
        throw std::invalid_argument("a frame without an input picture");
    }
    FrameResult result;
    if (request.road == Road::smart) {
        renderSmart(instance, request, result);
    } else if (request.input.depth() != Depth::float32) {
        renderLegacy(instance, request, result);
    } else {
        throw std::invalid_argument("float pixels come only on the smart road");
    }
    return result;
}

}  // namespace standin
