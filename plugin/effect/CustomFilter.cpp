#include "effect/CustomFilter.h"

#include "effect/RenderFrame.h"
#include "params/ParamGetter.h"
#include "params/ParamTable.h"

namespace streakfall {

namespace {

// One parameter at the time of the command, given back at once. All zero when the host does not
// hand it out.
PF_ParamDef currentDefinition(const PF_InData* inData, std::int32_t paramId) {
    GetParamByCheckout getter(inData);
    const BaseParam& param = *paramRegistry[static_cast<std::size_t>(paramId)];
    PF_ParamDef def{};
    if (param.readValue(nullptr, getter, def) != PF_Err_NONE) return PF_ParamDef{};
    const PF_ParamDef copy = def;
    static_cast<void>(param.releaseValue(getter, def));
    return copy;
}

}  // namespace

PF_Err CustomFilter::Dispatch(PF_Cmd cmd, PF_InData* inData, PF_OutData* outData,
                              PF_ParamDef** params, PF_LayerDef* output, void* extra) {
    return BaseFilter::Dispatch(cmd, inData, outData, params, output, extra);
}

PF_Err CustomFilter::QueryDynamicFlags(PF_InData* inData, PF_OutData* outData, PF_ParamDef**,
                                       PF_LayerDef*) {
    const bool redraws = currentDefinition(inData, paramIdOf("Random Interval")).u.sd.value != 0;
    const bool slides = currentDefinition(inData, paramIdOf("Auto Offset")).u.fs_d.value != 0.0;
    if (redraws || slides) {
        outData->out_flags |= PF_OutFlag_WIDE_TIME_INPUT;
    } else {
        outData->out_flags &= ~PF_OutFlag_WIDE_TIME_INPUT;
    }
    return PF_Err_NONE;
}

PF_Err CustomFilter::RenderFrame(const RenderContext& context) {
    switch (context.pixelFormat) {
        case PF_PixelFormat_ARGB32:
            return RenderFrame8(context);
        case PF_PixelFormat_ARGB64:
            return RenderFrame16(context);
        case PF_PixelFormat_ARGB128:
            return RenderFrameFloat(context);
        default:
            return PF_Err_UNRECOGNIZED_PARAM_TYPE;
    }
}

}  // namespace streakfall
