// Paints on the input as well.
#include "GoodEffect.h"

struct Stub : GoodEffect {
    PF_Err render(PF_InData* in, PF_EffectWorld& input, PF_EffectWorld& output,
                  double thickness) override {
        const PF_Err code = GoodEffect::render(in, input, output, thickness);
        if (!code) paint(input, rowsOf(thickness, input));
        return code;
    }
};

STUB_MODULE(Stub)
