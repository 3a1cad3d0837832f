// The two roads on which the host asks for a frame: three commands of BaseFilter.
#include "effect/BaseFilter.h"
#include "effect/RenderPlanning.h"
#include "params/ParamReads.h"

namespace streakfall {

namespace {

// The effect reads one layer and asks for it once.
constexpr PF_ParamIndex kInputLayer = 0;
constexpr A_long kCheckoutId = 0;

// The host calls it and tolerates no exception.
void deleteRenderContext(void* context) noexcept { delete static_cast<RenderContext*>(context); }

// Every parameter at the time of the command. Nothing looks at the definitions after the values
// are copied, so they go back to the host at once.
PF_Err readParamsAndCheckIn(const PF_InData* inData, EffectParams& record) {
    GetParamByCheckout getter(inData);
    CheckedOutParams checkedOut(getter);
    const PF_Err readError = checkedOut.ReadAllParams(&record);
    const PF_Err checkInError = checkedOut.CheckInAllParams();
    return readError != PF_Err_NONE ? readError : checkInError;
}

// Asks the host for exactly what it asked of the effect, and takes the answer into the output's
// rectangles: the effect claims no pixel beyond its input.
PF_Err checkOutInput(const PF_InData* inData, const PF_PreRenderExtra* extra,
                     const PF_RenderRequest& request) {
    PF_CheckoutResult result{};
    const PF_Err error = extra->cb->checkout_layer(inData->effect_ref, kInputLayer, kCheckoutId,
                                                   &request, inData->current_time,
                                                   inData->time_step, inData->time_scale, &result);
    if (error != PF_Err_NONE) return error;
    UnionRect(result.result_rect, extra->output->result_rect);
    UnionRect(result.max_result_rect, extra->output->max_result_rect);
    return PF_Err_NONE;
}

PF_Err checkOutWorlds(const PF_SmartRenderExtra* extra, RenderContext& context) {
    const PF_ProgPtr effectRef = context.inData->effect_ref;
    context.inputWorld = nullptr;
    context.outputWorld = nullptr;
    const PF_Err error =
        extra->cb->checkout_layer_pixels(effectRef, kCheckoutId, &context.inputWorld);
    if (error != PF_Err_NONE) return error;
    return extra->cb->checkout_output(effectRef, &context.outputWorld);
}

PF_Err passThrough(const PF_InData* inData, PF_ParamDef** params, PF_LayerDef* output) {
    return inData->utils->copy(inData->effect_ref, &params[kInputLayer]->u.ld, output, nullptr,
                               nullptr);
}

}  // namespace

PF_Err BaseFilter::SmartPreRender(PF_InData* inData, PF_OutData*, PF_PreRenderExtra* extra) {
    const PF_RenderRequest request = extra->input->output_request;

    auto* const context = new RenderContext;
    if (context == nullptr) return PF_Err_OUT_OF_MEMORY;
    // Handed over before anything can fail: the host frees it on every later failure too.
    extra->output->pre_render_data = context;
    extra->output->delete_pre_render_data_func = deleteRenderContext;

    const PF_Err error = readParamsAndCheckIn(inData, context->effectParams);
    return error != PF_Err_NONE ? error : checkOutInput(inData, extra, request);
}

PF_Err BaseFilter::SmartRender(PF_InData* inData, PF_OutData* outData, PF_SmartRenderExtra* extra) {
    auto* const context = static_cast<RenderContext*>(extra->input->pre_render_data);
    if (context == nullptr) return PF_Err_INTERNAL_STRUCT_DAMAGED;
    context->inData = inData;
    context->outData = outData;

    PF_Err error = checkOutWorlds(extra, *context);
    if (error != PF_Err_NONE) return error;
    // A host may have no input to give, and say so without an error: nothing is drawn then.
    if (context->inputWorld != nullptr && context->outputWorld != nullptr) {
        error = QueryPixelFormat(inData, context->inputWorld, context->pixelFormat);
        if (error != PF_Err_NONE) return error;
        error = RenderFrame(*context);
        if (error != PF_Err_NONE) return error;
    }
    return extra->cb->checkin_layer_pixels(inData->effect_ref, kCheckoutId);
}

PF_Err BaseFilter::Render(PF_InData* inData, PF_OutData* outData, PF_ParamDef** params,
                          PF_LayerDef* output) {
    if (inData->appl_id == kAppID_PrMr) return passThrough(inData, params, output);

    RenderContext context;
    context.inData = inData;
    context.outData = outData;
    context.inputWorld = &params[kInputLayer]->u.ld;
    context.outputWorld = output;

    GetParamByCheckout getter(inData);
    CheckedOutParams checkedOut(getter);
    PF_Err error = QueryPixelFormat(inData, context.inputWorld, context.pixelFormat);
    if (error == PF_Err_NONE) error = checkedOut.ReadAllParams(&context.effectParams);
    if (error == PF_Err_NONE) error = RenderFrame(context);
    const PF_Err checkInError = checkedOut.CheckInAllParams();
    return error != PF_Err_NONE ? error : checkInError;
}

}  // namespace streakfall
