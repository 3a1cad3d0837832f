// Ends its process in good order.
#include <unistd.h>

#include "GoodEffect.h"

struct Stub : GoodEffect {
    void paint(PF_EffectWorld&, A_long) override { _exit(0); }
};

STUB_MODULE(Stub)
