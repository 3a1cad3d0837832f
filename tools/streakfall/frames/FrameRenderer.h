// Draws single frames in memory, with the values of a command line: an instance of the effect that
// is made anew when the layer's size changes. One thread at a time; several renderers of one
// session may draw at once.
#pragma once

#include <functional>
#include <optional>

#include "EffectSession.h"
#include "host/FrameRender.h"

namespace tool {

struct FrameSettings {
    FrameRate rate;
    int divisor = 1;  // the pictures are at 1/divisor of the layer's size
    standin::Road road = standin::Road::smart;
};

struct FrameTask {
    int frame = 0;
    standin::LayerSize layer{0, 0};  // full size
    standin::Image input{};          // the layer's picture; its depth is the frame's
    // Both may be empty. Told how far the frame is, 0 to 1, at each tenth of its lines, and asked
    // there whether it is to end.
    std::function<void(double)> progress;
    std::function<bool()> isCancelled;
    // In place of `input`, a picture that the caller keeps; may be null.
    const standin::Image* sharedInput = nullptr;
};

struct DrawnFrame {
    standin::Image picture;    // empty when it was ended before its time
    double effectSeconds = 0;  // in the effect's own commands
};

// On an instance that the caller keeps; the task's layer counts for nothing. Throws Failure
// (effect) with the code that the effect answered.
[[nodiscard]] DrawnFrame drawOn(standin::Instance& instance, const FrameSettings& settings,
                                FrameTask task);

class FrameRenderer {
  public:
    // All must outlive the renderer.
    FrameRenderer(EffectSession& session, const ParamArguments& arguments,
                  const FrameSettings& settings)
        : session_(session), arguments_(arguments), settings_(settings) {}

    // As drawOn, on the instance for the task's layer.
    [[nodiscard]] DrawnFrame draw(FrameTask task);

    // The instance for a layer of this size, with the values stored in it.
    [[nodiscard]] standin::Instance& instanceFor(standin::LayerSize layer);

  private:
    EffectSession& session_;
    const ParamArguments& arguments_;
    FrameSettings settings_;
    std::optional<standin::Instance> instance_;
};

}  // namespace tool
