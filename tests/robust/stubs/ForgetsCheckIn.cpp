// Keeps what it checks out.
#include "GoodEffect.h"

struct Stub : GoodEffect {
    PF_Err readSlider(PF_InData* in, double& value) override {
        PF_ParamDef def{};
        const PF_Err code = in->inter.checkout_param(in->effect_ref, kSliderIndex, in->current_time,
                                                     in->time_step, in->time_scale, &def);
        value = def.u.fs_d.value;
        return code;
    }
};

STUB_MODULE(Stub)
