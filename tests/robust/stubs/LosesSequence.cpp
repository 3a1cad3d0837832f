// Takes a new block at every flatten and loses the old one.
#include "GoodEffect.h"

struct Stub : GoodEffect {
    PF_Err flatten(PF_InData* in, PF_OutData* out) override { return sequenceSetup(in, out); }
};

STUB_MODULE(Stub)
