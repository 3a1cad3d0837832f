// Draws wider on the older road.
#include "GoodEffect.h"

struct Stub : GoodEffect {
    PF_Err renderLegacy(PF_InData* in, PF_EffectWorld* input, PF_EffectWorld* output) override {
        return render(in, *input, *output, 9);
    }
};

STUB_MODULE(Stub)
