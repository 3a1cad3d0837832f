// Answers with a code of its own for every failure.
#include "GoodEffect.h"

struct Stub : GoodEffect {
    PF_Err run(PF_Cmd command, PF_InData* in, PF_OutData* out, PF_ParamDef** params,
               PF_LayerDef* output, void* extra) override {
        const PF_Err code = GoodEffect::run(command, in, out, params, output, extra);
        return code ? PF_Err{PF_Err_INVALID_INDEX} : code;
    }
};

STUB_MODULE(Stub)
