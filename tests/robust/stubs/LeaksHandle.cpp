// Asks for a handle with every frame and forgets it.
#include "GoodEffect.h"

struct Stub : GoodEffect {
    PF_Err render(PF_InData* in, PF_EffectWorld& input, PF_EffectWorld& output,
                  double thickness) override {
        in->utils->host_new_handle(100);
        return GoodEffect::render(in, input, output, thickness);
    }
};

STUB_MODULE(Stub)
