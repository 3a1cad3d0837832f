// Answers that all is well when the host could not copy.
#include "GoodEffect.h"

struct Stub : GoodEffect {
    PF_Err render(PF_InData* in, PF_EffectWorld& input, PF_EffectWorld& output,
                  double thickness) override {
        GoodEffect::render(in, input, output, thickness);
        return PF_Err_NONE;
    }
};

STUB_MODULE(Stub)
