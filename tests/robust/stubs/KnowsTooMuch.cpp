// Refuses commands that it does not know.
#include "GoodEffect.h"

struct Stub : GoodEffect {
    PF_Err run(PF_Cmd command, PF_InData* in, PF_OutData* out, PF_ParamDef** params,
               PF_LayerDef* output, void* extra) override {
        if (command > PF_Cmd_SMART_RENDER) return PF_Err_BAD_CALLBACK_PARAM;
        return GoodEffect::run(command, in, out, params, output, extra);
    }
};

STUB_MODULE(Stub)
