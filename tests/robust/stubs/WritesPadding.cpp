// Takes the padding of rows for pixels.
#include "GoodEffect.h"

struct Stub : GoodEffect {
    void paint(PF_EffectWorld& output, A_long rows) override {
        for (A_long y = 0; y < rows; ++y) {
            std::memset(rowOf(output, y), 0x3C, static_cast<std::size_t>(output.rowbytes));
        }
    }
};

STUB_MODULE(Stub)
