// Draws each frame a little wider than the one before.
#include "GoodEffect.h"

struct Stub : GoodEffect {
    PF_Err render(PF_InData* in, PF_EffectWorld& input, PF_EffectWorld& output,
                  double thickness) override {
        return GoodEffect::render(in, input, output, thickness + frames_++ % 7);
    }

    int frames_ = 0;
};

STUB_MODULE(Stub)
