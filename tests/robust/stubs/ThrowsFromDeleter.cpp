// Throws when its plan is freed.
#include "GoodEffect.h"

struct Stub : GoodEffect {
    PF_Err plan(PF_InData* in, PF_PreRenderExtra* extra) override {
        const PF_Err code = GoodEffect::plan(in, extra);
        extra->output->delete_pre_render_data_func = [](void*) { throw 1; };
        return code;
    }
};

STUB_MODULE(Stub)
