// Asks for its input as it is at the start of the layer.
#include "GoodEffect.h"

struct Stub : GoodEffect {
    PF_Err plan(PF_InData* in, PF_PreRenderExtra* extra) override {
        PF_InData atStart = *in;
        atStart.current_time = 0;
        return GoodEffect::plan(&atStart, extra);
    }
};

STUB_MODULE(Stub)
