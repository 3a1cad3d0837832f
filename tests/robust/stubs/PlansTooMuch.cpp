// Promises more than was asked for.
#include "GoodEffect.h"

struct Stub : GoodEffect {
    PF_Err plan(PF_InData* in, PF_PreRenderExtra* extra) override {
        const PF_Err code = GoodEffect::plan(in, extra);
        extra->output->result_rect = extra->output->max_result_rect;
        return code;
    }
};

STUB_MODULE(Stub)
