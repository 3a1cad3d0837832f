#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "host/Image.h"
#include "host/Instance.h"

namespace standin {

enum class Road { smart, legacy };

// One frame as the host asks for it. The picture's depth is the frame's depth.
struct FrameRequest {
    Road road = Road::smart;
    Image input;  // the layer at the downsampled size
    // In its place, a picture that several frames share and the caller keeps; may be null.
    const Image* sharedInput = nullptr;
    const Image& picture() const { return sharedInput ? *sharedInput : input; }

    A_long currentTime = 0;
    A_long timeStep = 1;
    A_u_long timeScale = 24;
    A_long totalTime = 240;

    PF_Quality quality = PF_Quality_HI;
    PF_Field field = PF_Field_FRAME;
    PF_RationalScale downsampleX{1, 1};
    PF_RationalScale downsampleY{1, 1};
    PF_RationalScale pixelAspectRatio{1, 1};
    A_long originX = 0;  // of the input world, in layer pixels at the downsampled size
    A_long originY = 0;

    // Smart road: the part of the picture that is asked for; none: all of it. It may be empty.
    std::optional<PF_LRect> rect;
    // Smart road: how many plans are made and thrown away before the one that is rendered.
    int discardedPlans = 0;
    // Smart road: end after the plan.
    bool planOnly = false;
    // Smart road: what the host does not give in the render although it answers without an error.
    bool withholdInput = false;
    bool withholdOutput = false;
    // Smart road: the render comes without the plan's data.
    bool withholdPlanData = false;

    // Sees the source of a transfer before it is laid over the output.
    std::function<void(const PF_EffectWorld& source, Depth depth)> onTransfer;
    // Sees each report; true answers it as a cancel.
    std::function<bool(A_long done, A_long total)> onProgress;
    // Asked at each question of the effect whether the user cancels this frame.
    std::function<bool()> isCancelled;
};

struct FrameResult {
    PF_Err code = PF_Err_NONE;
    std::string message;    // what the effect left for the user to read
    bool rendered = false;  // a render was sent; on the smart road not for an empty plan
    Image output;           // of the plan's rectangle; empty when nothing was rendered

    // Smart road.
    PF_Err planCode = PF_Err_NONE;
    PF_LRect resultRect{};
    PF_LRect maxResultRect{};
    std::optional<PF_RenderRequest> layerRequest;  // what the effect asked of the input layer

    std::vector<A_long> progress;  // the values reported, in order
    std::vector<CallKind> calls;   // of this frame that came with an effect_ref, in order
    long unwritten = 0;            // output pixels that the effect never wrote

    double renderSeconds = 0;    // inside the render command, the host's part included
    double transferSeconds = 0;  // of these, inside the host's transfer_rect
};

// Plays one frame from the first command to the last. Damage to the input, to guards or to row
// padding, and broken rules, go to the host's ledger. Throws std::invalid_argument when the request
// makes no sense: no input, or float on the legacy road.
FrameResult renderFrame(Instance& instance, const FrameRequest& request);

}  // namespace standin
