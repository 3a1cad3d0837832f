// Leaves a half drawn picture when it is stopped.
#include "GoodEffect.h"

struct Stub : GoodEffect {
    PF_Err render(PF_InData* in, PF_EffectWorld& input, PF_EffectWorld& output,
                  double thickness) override {
        const PF_Err code = GoodEffect::render(in, input, output, thickness);
        if (code == PF_Interrupt_CANCEL) paint(output, 1);
        return code;
    }
};

STUB_MODULE(Stub)
