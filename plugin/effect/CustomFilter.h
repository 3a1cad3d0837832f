// CustomFilter: the effect that draws. Adds no data to BaseFilter.
#pragma once

#include "effect/BaseFilter.h"

namespace streakfall {

class CustomFilter final : public BaseFilter {
  public:
    PF_Err Dispatch(PF_Cmd cmd, PF_InData* inData, PF_OutData* outData, PF_ParamDef** params,
                    PF_LayerDef* output, void* extra) override;

    // Tells the host whether a frame depends on its time: only when "Random Interval" or
    // "Auto Offset" is at work.
    PF_Err QueryDynamicFlags(PF_InData* inData, PF_OutData* outData, PF_ParamDef** params,
                             PF_LayerDef* output) override;

    // Picks the flow of the frame's depth; 514 for a pixel format that is none of the three.
    PF_Err RenderFrame(const RenderContext& context) override;
};

}  // namespace streakfall
