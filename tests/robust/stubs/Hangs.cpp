// Never comes back from a frame.
#include "GoodEffect.h"

struct Stub : GoodEffect {
    void paint(PF_EffectWorld&, A_long) override {
        for (volatile bool forever = true; forever;) {
        }
    }
};

STUB_MODULE(Stub)
