// Lets an exception out.
#include <stdexcept>

#include "GoodEffect.h"

struct Stub : GoodEffect {
    PF_Err renderLegacy(PF_InData*, PF_EffectWorld*, PF_EffectWorld*) override {
        throw std::runtime_error("out of the module");
    }
};

STUB_MODULE(Stub)
