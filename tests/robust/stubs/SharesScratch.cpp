// Keeps the size of its bar where every thread finds it.
#include <unistd.h>

#include "GoodEffect.h"

struct Stub : GoodEffect {
    void paint(PF_EffectWorld& output, A_long rows) override {
        rows_ = rows;
        usleep(2000);
        GoodEffect::paint(output, rows_ < output.height ? rows_ : output.height);
    }

    volatile A_long rows_ = 0;
};

STUB_MODULE(Stub)
