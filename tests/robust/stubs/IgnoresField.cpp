// Lays a world over its picture as if every frame were a whole one of high quality.
#include "GoodEffect.h"

struct Stub : GoodEffect {
    PF_Err render(PF_InData* in, PF_EffectWorld& input, PF_EffectWorld& output,
                  double thickness) override {
        const PF_Err code = GoodEffect::render(in, input, output, thickness);
        const PF_CompositeMode inFront{PF_Xfer_IN_FRONT, 0, 255, 0, PF_MAX_OPACITY16};
        return code ? code
                    : in->utils->transfer_rect(in->effect_ref, PF_Quality_HI, PF_MF_Alpha_STRAIGHT,
                                               PF_Field_FRAME, nullptr, &input, &inFront, nullptr,
                                               0, 0, &output);
    }
};

STUB_MODULE(Stub)
