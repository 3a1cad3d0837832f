// BaseFilter: the effect as the host's commands see it, one virtual operation a command.
//
// There is one object for the process, in fact a CustomFilter, and it holds no data: everything a
// command works on comes with the command, so one object serves all instances and threads.
//
// Every operation is called with the records of its command, valid for the length of the call,
// and returns a host error code, 0 for success. Failures deep down come out as exceptions, which
// the entry point turns into codes.
#pragma once

#include "effect/RenderContext.h"
#include "hostapi/hostapi.h"

namespace streakfall {

class BaseFilter {
  public:
    BaseFilter() = default;
    virtual ~BaseFilter() = default;
    BaseFilter(const BaseFilter&) = delete;
    BaseFilter& operator=(const BaseFilter&) = delete;

    // Sends a command to its operation. Commands without one, known or not, give 0 untouched.
    virtual PF_Err Dispatch(PF_Cmd cmd, PF_InData* inData, PF_OutData* outData,
                            PF_ParamDef** params, PF_LayerDef* output, void* extra);

    virtual PF_Err About(PF_InData* inData, PF_OutData* outData, PF_ParamDef** params,
                         PF_LayerDef* output);
    // Stores version and flags; the property list repeats them.
    virtual PF_Err GlobalSetup(PF_InData* inData, PF_OutData* outData, PF_ParamDef** params,
                               PF_LayerDef* output);
    virtual PF_Err GlobalSetdown(PF_InData* inData, PF_OutData* outData, PF_ParamDef** params,
                                 PF_LayerDef* output);
    virtual PF_Err ParamsSetup(PF_InData* inData, PF_OutData* outData, PF_ParamDef** params,
                               PF_LayerDef* output);
    virtual PF_Err UserChangedParam(PF_InData* inData, PF_OutData* outData, PF_ParamDef** params,
                                    PF_LayerDef* output, PF_UserChangedParamExtra* extra);
    virtual PF_Err UpdateParamsUI(PF_InData* inData, PF_OutData* outData, PF_ParamDef** params,
                                  PF_LayerDef* output);

    // The whole frame in one command, for hosts without smart render. On the "PrMr" host the
    // input goes through unchanged and no parameter is read.
    virtual PF_Err Render(PF_InData* inData, PF_OutData* outData, PF_ParamDef** params,
                          PF_LayerDef* output);
    // Reads the parameters into a new RenderContext, which the host owns from here on and frees
    // through the deleter that comes with it, and asks for the input as the host asked for the
    // output.
    virtual PF_Err SmartPreRender(PF_InData* inData, PF_OutData* outData, PF_PreRenderExtra* extra);
    // Draws into the host's worlds what the context of the pre-render tells. 512 without one.
    virtual PF_Err SmartRender(PF_InData* inData, PF_OutData* outData, PF_SmartRenderExtra* extra);

    virtual PF_Err SequenceSetup(PF_InData* inData, PF_OutData* outData);
    virtual PF_Err SequenceSetdown(PF_InData* inData, PF_OutData* outData);
    virtual PF_Err SequenceFlatten(PF_InData* inData, PF_OutData* outData);
    virtual PF_Err SequenceResetup(PF_InData* inData, PF_OutData* outData);

    // Changes nothing here.
    virtual PF_Err QueryDynamicFlags(PF_InData* inData, PF_OutData* outData, PF_ParamDef** params,
                                     PF_LayerDef* output);

    // Draws the frame of a filled context. 512 here: there is nothing to draw.
    virtual PF_Err RenderFrame(const RenderContext& context);
};

}  // namespace streakfall
