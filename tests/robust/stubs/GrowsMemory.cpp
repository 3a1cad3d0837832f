// Keeps 16 KiB of its own with every frame.
#include <string>
#include <vector>

#include "GoodEffect.h"

struct Stub : GoodEffect {
    std::vector<std::string> kept;

    PF_Err render(PF_InData* in, PF_EffectWorld& input, PF_EffectWorld& output,
                  double thickness) override {
        kept.emplace_back(16384, 'x');
        return GoodEffect::render(in, input, output, thickness);
    }
};

STUB_MODULE(Stub)
