// Acquires a suite with every frame and keeps it.
#include "GoodEffect.h"

struct Stub : GoodEffect {
    PF_Err render(PF_InData* in, PF_EffectWorld& input, PF_EffectWorld& output,
                  double thickness) override {
        const void* suite = nullptr;
        in->pica_basicP->AcquireSuite(kPFFillMatteSuite, kPFFillMatteSuiteVersion, &suite);
        return GoodEffect::render(in, input, output, thickness);
    }
};

STUB_MODULE(Stub)
