// Writes one byte behind the last row.
#include "GoodEffect.h"

struct Stub : GoodEffect {
    void paint(PF_EffectWorld& output, A_long rows) override {
        GoodEffect::paint(output, rows);
        *rowOf(output, output.height) = 0;
    }
};

STUB_MODULE(Stub)
