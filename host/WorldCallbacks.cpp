// The callbacks on worlds: making, disposing, filling, copying, laying one over another.
#include <chrono>

#include "host/Command.h"
#include "host/FillCopy.h"
#include "host/SuiteTables.h"
#include "host/Transfer.h"
#include "host/Worlds.h"

namespace standin {
namespace {

PF_Err misuse(Command& command, const std::string& what) {
    command.services().ledger().violation(what);
    return PF_Err_BAD_CALLBACK_PARAM;
}

PF_Err makeWorld(PF_ProgPtr ref, A_long width, A_long height, Depth depth, bool clear,
                 PF_EffectWorld* world) {
    Services& services = ref->command->services();
    return effectWorlds::create(services.sharedLedger(), services.offer(), width, height, depth,
                                clear, *world);
}

PF_Err newWorld(PF_ProgPtr ref, A_long width, A_long height, PF_Boolean clear,
                PF_PixelFormat format, PF_EffectWorld* world) {
    if (const PF_Err planned = ref->command->onCall(CallKind::newWorld)) {
        return planned;
    }
    for (const Depth depth : {Depth::bits8, Depth::bits16, Depth::float32}) {
        if (format == pixelFormat(depth)) {
            return makeWorld(ref, width, height, depth, clear != 0, world);
        }
    }
    return misuse(*ref->command, "new world of an unknown pixel format");
}

PF_Err newWorldByFlags(PF_ProgPtr ref, A_long width, A_long height, PF_NewWorldFlags flags,
                       PF_EffectWorld* world) {
    if (const PF_Err planned = ref->command->onCall(CallKind::newWorld)) {
        return planned;
    }
    const Depth depth = flags & PF_NewWorldFlag_DEEP_PIXELS ? Depth::bits16 : Depth::bits8;
    return makeWorld(ref, width, height, depth, (flags & PF_NewWorldFlag_CLEAR_PIXELS) != 0, world);
}

PF_Err disposeWorld(PF_ProgPtr ref, PF_EffectWorld* world) {
    ref->command->onCall(CallKind::disposeWorld);
    return effectWorlds::dispose(*world, ref->command->services().ledger());
}

template <class Pixel>
PF_Err fillWith(PF_ProgPtr ref, const Pixel* color, const PF_Rect* rect, PF_EffectWorld* world) {
    Command& command = *ref->command;
    if (const PF_Err planned = command.onCall(CallKind::fill)) {
        return planned;
    }
    const auto depth = depthOf(*world);
    if (!depth) {
        return misuse(command, "fill of a world that is not alive");
    }
    command.judge(FillCall{rect, *world});
    fill(*world, *depth, rect, color ? fillColor(*color) : FillColor{});
    return PF_Err_NONE;
}

template <CopyCall::Way kWay>
PF_Err copyWorld(PF_ProgPtr ref, PF_EffectWorld* source, PF_EffectWorld* destination,
                 PF_Rect* sourceRect, PF_Rect* destRect) {
    Command& command = *ref->command;
    if (const PF_Err planned = command.onCall(CallKind::copy)) {
        return planned;
    }
    const auto depth = depthOf(*source);
    if (!depth || depth != depthOf(*destination)) {
        return misuse(command, "copy between worlds that are not alive or not of one depth");
    }
    command.judge(CopyCall{kWay, sourceRect, destRect, *source, *destination});
    if (!copy(*source, *destination, *depth, sourceRect, destRect)) {
        return misuse(command, "copy between rectangles of different size, or outside of a world");
    }
    return PF_Err_NONE;
}

// This host knows one way of laying: straight colour, in front, a mask's alpha as it is.
bool isKnownWay(PF_ModeFlags modeFlags, const PF_CompositeMode& mode, const PF_MaskWorld* mask) {
    return modeFlags == PF_MF_Alpha_STRAIGHT && mode.xfer == PF_Xfer_IN_FRONT && !mode.rgb_only &&
           (!mask || mask->what_is_mask == PF_MaskFlag_NONE);
}

PF_Err transferRect(PF_ProgPtr ref, PF_Quality quality, PF_ModeFlags modeFlags, PF_Field field,
                    const PF_Rect* sourceRect, const PF_EffectWorld* source,
                    const PF_CompositeMode* mode, const PF_MaskWorld* mask, A_long destX,
                    A_long destY, PF_EffectWorld* destination) {
    Command& command = *ref->command;
    if (const PF_Err planned = command.onCall(CallKind::transfer)) {
        return planned;
    }
    const auto depth = depthOf(*source);
    if (!depth || depth != depthOf(*destination) || (mask && depth != depthOf(mask->mask))) {
        return misuse(command, "transfer between worlds that are not alive or not of one depth");
    }
    if (!isKnownWay(modeFlags, *mode, mask)) {
        return misuse(command, "transfer in a way that this host does not know");
    }
    command.judge(TransferCall{quality, field, sourceRect, *source, *mode, mask, destX, destY});
    command.transferring(*source, *depth);
    const auto start = std::chrono::steady_clock::now();
    transferInFront(
        {*source, sourceRect ? *sourceRect : PF_LRect{0, 0, source->width, source->height}, destX,
         destY, mask ? &mask->mask : nullptr, mask ? mask->offset : PF_Point{0, 0}, mode->opacity,
         mode->opacitySu, *destination},
        *depth);
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
    command.transferred(taken.count());
    return PF_Err_NONE;
}

}  // namespace

void addWorldCallbacks(SuiteTables& tables) {
    tables.world1 = {newWorldByFlags, disposeWorld};
    tables.world2.PF_NewWorld = newWorld;
    tables.world2.PF_DisposeWorld = disposeWorld;
    tables.fillMatte.fill = fillWith<PF_Pixel>;
    tables.fillMatte.fill16 = fillWith<PF_Pixel16>;
    tables.fillMatte.fill_float = fillWith<PF_PixelFloat>;
    tables.worldTransform.copy = copyWorld<CopyCall::Way::plain>;
    tables.worldTransform.copy_hq = copyWorld<CopyCall::Way::highQuality>;
    tables.worldTransform.transfer_rect = transferRect;
    tables.utils.copy = copyWorld<CopyCall::Way::any>;
    tables.utils.fill = fillWith<PF_Pixel>;
    tables.utils.fill16 = fillWith<PF_Pixel16>;
    tables.utils.new_world = newWorldByFlags;
    tables.utils.dispose_world = disposeWorld;
    tables.utils.transfer_rect = transferRect;
}

}  // namespace standin
