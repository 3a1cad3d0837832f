// Gives two parameters one id.
#include "GoodEffect.h"

struct Stub : GoodEffect {
    PF_Err addParams(PF_InData* in, PF_OutData* out) override {
        out->num_params = 3;
        const PF_Err code = addSlider(in, "Thickness", kSliderId);
        return code ? code : addSlider(in, "Length", kSliderId);
    }
};

STUB_MODULE(Stub)
