// Shows nothing but its bar.
#include "GoodEffect.h"

struct Stub : GoodEffect {
    PF_Err render(PF_InData*, PF_EffectWorld&, PF_EffectWorld& output, double thickness) override {
        paint(output, rowsOf(thickness, output));
        return PF_Err_NONE;
    }
};

STUB_MODULE(Stub)
