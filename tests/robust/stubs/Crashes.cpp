// Ends its process with a signal.
#include <cstdlib>

#include "GoodEffect.h"

struct Stub : GoodEffect {
    void paint(PF_EffectWorld&, A_long) override { std::abort(); }
};

STUB_MODULE(Stub)
