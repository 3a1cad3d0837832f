// Sequence data of any bytes, as a damaged project or another effect's may bring, through the
// commands that read it. Not all can be used, but all can be met: what follows is a fresh block.
#include <vector>

#include "Stage.h"
#include "host/Instance.h"

using namespace fuzz;
using namespace standin;
using Bytes = std::vector<std::uint8_t>;

namespace {

constexpr LayerSize kLayer{64, 48};

// One host with a user interface and one without, which takes less of a block for granted.
Stage& stage(bool renderEngine) {
    static const auto offer = [](bool engine) {
        HostOffer result;
        result.renderEngine = engine;
        result.moveUnlockedHandles = true;
        return result;
    };
    static Stage edits(offer(false)), renders(offer(true));
    return renderEngine ? renders : edits;
}

// Bytes that every well saved instance has.
const Bytes& wellSaved() {
    static const Bytes bytes = Instance(stage(false).host(), kLayer).save();
    return bytes;
}

void expectFresh(Instance& instance, Stage& on) {
    const PF_Err code = instance.resetup();
    expect(code == PF_Err_NONE, "resetup answers code ", code);
    const Bytes saved = instance.save();
    expect(saved.size() == wellSaved().size(), "a later save has ", saved.size(), " bytes");
    // Without a user interface the header is saved as it came.
    expect(on.host().offer().renderEngine || saved == wellSaved(), "a later save has other bytes");
    instance.updatePanel();
    on.expectTidy();
}

void meet(const Bytes& bytes, Stage& on) {
    Instance instance(on.host(), kLayer);
    instance.replaceSequenceData(bytes);
    expectFresh(instance, on);

    // As if the bytes were live already.
    instance.replaceSequenceData(bytes);
    instance.updatePanel();
    instance.queryDynamicFlags();
    const PF_Err code = instance.flatten();
    expect(code == PF_Err_NONE || code == PF_Err_INTERNAL_STRUCT_DAMAGED, "flatten answers code ",
           code);
    expect(code == PF_Err_NONE || bytes.size() < wellSaved().size(), "flatten answers code ", code,
           " for a block of ", bytes.size(), " bytes");
    expectFresh(instance, on);

    instance.replaceSequenceData(bytes);
    const PF_Err down = instance.setDown();
    expect(down == PF_Err_NONE, "setdown answers code ", down);
    on.expectTidy();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Bytes bytes(data, data + size);
    meet(bytes, stage(false));
    meet(bytes, stage(true));
    return 0;
}
