#include "effect/BaseFilter.h"

#include "effect/Announcement.h"
#include "params/AboutText.h"
#include "params/OptionsDialog.h"
#include "params/ParamTable.h"
#include "params/SequenceData.h"
#include "params/UiReactions.h"

namespace streakfall {

namespace {

// Hosts hand an instance's sequence data over in in_data, in out_data, or in both.
void findSequenceData(PF_InData* inData, const PF_OutData* outData) {
    if (inData->sequence_data == nullptr) inData->sequence_data = outData->sequence_data;
}

}  // namespace

PF_Err BaseFilter::Dispatch(PF_Cmd cmd, PF_InData* inData, PF_OutData* outData,
                            PF_ParamDef** params, PF_LayerDef* output, void* extra) {
    switch (cmd) {
        case PF_Cmd_ABOUT:
            return About(inData, outData, params, output);
        case PF_Cmd_GLOBAL_SETUP:
            return GlobalSetup(inData, outData, params, output);
        case PF_Cmd_GLOBAL_SETDOWN:
            return GlobalSetdown(inData, outData, params, output);
        case PF_Cmd_PARAMS_SETUP:
            return ParamsSetup(inData, outData, params, output);
        case PF_Cmd_SEQUENCE_SETUP:
            return SequenceSetup(inData, outData);
        case PF_Cmd_SEQUENCE_RESETUP:
            return SequenceResetup(inData, outData);
        case PF_Cmd_SEQUENCE_FLATTEN:
            return SequenceFlatten(inData, outData);
        case PF_Cmd_SEQUENCE_SETDOWN:
            return SequenceSetdown(inData, outData);
        case PF_Cmd_DO_DIALOG:
            DoDialog(inData, params);
            return PF_Err_NONE;
        case PF_Cmd_RENDER:
            return Render(inData, outData, params, output);
        case PF_Cmd_USER_CHANGED_PARAM:
            return UserChangedParam(inData, outData, params, output,
                                    static_cast<PF_UserChangedParamExtra*>(extra));
        case PF_Cmd_UPDATE_PARAMS_UI:
            return UpdateParamsUI(inData, outData, params, output);
        case PF_Cmd_QUERY_DYNAMIC_FLAGS:
            return QueryDynamicFlags(inData, outData, params, output);
        case PF_Cmd_SMART_PRE_RENDER:
            return SmartPreRender(inData, outData, static_cast<PF_PreRenderExtra*>(extra));
        case PF_Cmd_SMART_RENDER:
            return SmartRender(inData, outData, static_cast<PF_SmartRenderExtra*>(extra));
        default:
            return PF_Err_NONE;
    }
}

PF_Err BaseFilter::About(PF_InData* inData, PF_OutData* outData, PF_ParamDef**, PF_LayerDef*) {
    return about(inData, outData);
}

PF_Err BaseFilter::GlobalSetup(PF_InData*, PF_OutData* outData, PF_ParamDef**, PF_LayerDef*) {
    outData->my_version = kPackedVersion;
    outData->out_flags = kOutFlags;
    outData->out_flags2 = kOutFlags2;
    return PF_Err_NONE;
}

PF_Err BaseFilter::GlobalSetdown(PF_InData*, PF_OutData*, PF_ParamDef**, PF_LayerDef*) {
    return PF_Err_NONE;
}

PF_Err BaseFilter::ParamsSetup(PF_InData* inData, PF_OutData* outData, PF_ParamDef**,
                               PF_LayerDef*) {
    return paramsSetup(inData, outData);
}

PF_Err BaseFilter::UserChangedParam(PF_InData* inData, PF_OutData* outData, PF_ParamDef** params,
                                    PF_LayerDef*, PF_UserChangedParamExtra* extra) {
    findSequenceData(inData, outData);
    return userChangedParam(inData, params, extra);
}

PF_Err BaseFilter::UpdateParamsUI(PF_InData* inData, PF_OutData* outData, PF_ParamDef** params,
                                  PF_LayerDef*) {
    findSequenceData(inData, outData);
    return updateParamsUI(inData, outData, params);
}

PF_Err BaseFilter::SequenceSetup(PF_InData* inData, PF_OutData* outData) {
    return sequenceSetup(inData, outData);
}

PF_Err BaseFilter::SequenceSetdown(PF_InData* inData, PF_OutData* outData) {
    findSequenceData(inData, outData);
    return sequenceSetdown(inData);
}

PF_Err BaseFilter::SequenceFlatten(PF_InData* inData, PF_OutData* outData) {
    if (outData->sequence_data == nullptr) outData->sequence_data = inData->sequence_data;
    return sequenceFlatten(inData, outData);
}

PF_Err BaseFilter::SequenceResetup(PF_InData* inData, PF_OutData* outData) {
    findSequenceData(inData, outData);
    return sequenceResetup(inData, outData, [&] { return SequenceSetup(inData, outData); });
}

PF_Err BaseFilter::QueryDynamicFlags(PF_InData*, PF_OutData*, PF_ParamDef**, PF_LayerDef*) {
    return PF_Err_NONE;
}

PF_Err BaseFilter::RenderFrame(const RenderContext&) { return PF_Err_INTERNAL_STRUCT_DAMAGED; }

}  // namespace streakfall
