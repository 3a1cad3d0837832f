// Counts to its value one by one.
#include "GoodEffect.h"

struct Stub : GoodEffect {
    PF_Err render(PF_InData* in, PF_EffectWorld& input, PF_EffectWorld& output,
                  double thickness) override {
        volatile double count = 0;
        for (double next = 0; next < thickness; next = count + 1) {
            count = next;
        }
        return GoodEffect::render(in, input, output, thickness);
    }
};

STUB_MODULE(Stub)
