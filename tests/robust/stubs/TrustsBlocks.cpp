// Believes whatever a project says.
#include <cstdlib>

#include "GoodEffect.h"

struct Stub : GoodEffect {
    PF_Err run(PF_Cmd command, PF_InData* in, PF_OutData* out, PF_ParamDef** params,
               PF_LayerDef* output, void* extra) override {
        if (command == PF_Cmd_SEQUENCE_RESETUP && in->sequence_data) {
            if (std::memcmp(*in->sequence_data, "stub", 4) != 0) std::abort();
        }
        return GoodEffect::run(command, in, out, params, output, extra);
    }
};

STUB_MODULE(Stub)
