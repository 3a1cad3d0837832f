// What the effect tells the host in a frame's calls on worlds. The stand-in has whole frames, whose
// pictures these arguments do not change; a host that draws fields, or draft frames in a way of
// their own, acts upon them.
#include "host/FrameCommand.h"

namespace standin {
namespace {

bool isWhole(const PF_Rect* rect, const PF_EffectWorld& world) {
    return !rect || (rect->left == 0 && rect->top == 0 && rect->right == world.width &&
                     rect->bottom == world.height);
}

}  // namespace

void FrameCommand::expect(bool right, const char* otherwise) {
    if (!right) {
        services().ledger().violation(otherwise);
    }
}

void FrameCommand::judge(const TransferCall& call) {
    const PF_CompositeMode& mode = call.mode;
    expect(call.quality == request_.quality, "transfer in another quality than the frame's");
    expect(call.field == request_.field, "transfer of another field than the frame's");
    expect(isWhole(call.sourceRect, call.source), "transfer of a part of the source");
    expect(call.destX == 0 && call.destY == 0, "transfer to another place than the source's");
    expect(mode.opacity == 255 && mode.opacitySu == PF_MAX_OPACITY16 && mode.rand_seed == 0,
           "transfer with an opacity below its largest in some depth, or with a random seed");
    expect(!call.mask || (call.mask->offset.h == 0 && call.mask->offset.v == 0),
           "transfer through a mask that does not lie over the source");
}

void FrameCommand::judge(const FillCall& call) {
    expect(isWhole(call.rect, call.world), "fill of a part of a world");
}

void FrameCommand::judge(const CopyCall& call) {
    expect(isWhole(call.sourceRect, call.source) && isWhole(call.destRect, call.destination),
           "copy of a part of a world");
    const bool high = request_.quality == PF_Quality_HI;
    expect(call.way != CopyCall::Way::plain || !high, "plain copy in a frame of high quality");
    expect(call.way != CopyCall::Way::highQuality || high,
           "copy of high quality in a frame of another one");
}

}  // namespace standin
