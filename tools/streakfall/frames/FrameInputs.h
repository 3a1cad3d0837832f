// The input pictures of a run, for whoever asks. A picture that stands for all frames, and an empty
// one, is read once and shared. Safe from any thread.
#pragma once

#include <memory>
#include <mutex>

#include "RenderPlan.h"

namespace tool {

struct FrameInput {
    standin::LayerSize layer{0, 0};  // full size
    standin::Image image;            // at the scale of the run
    PictureTraits traits;
};

class FrameInputs {
  public:
    FrameInputs(const RenderOptions& options, const RunForm& form)
        : options_(options), form_(form) {}

    // Throws Failure (input).
    [[nodiscard]] std::shared_ptr<const FrameInput> picture(const FrameJob& job);
    // The full size of the picture, and a digest of its content; of a file not yet read it takes
    // the head, and all bytes. Throws Failure (input).
    [[nodiscard]] standin::LayerSize sizeOf(const FrameJob& job);
    [[nodiscard]] std::string digestOf(const FrameJob& job);

  private:
    [[nodiscard]] bool isStill(const FrameJob& job) const;
    [[nodiscard]] FrameInput load(const FrameJob& job) const;
    [[nodiscard]] FrameInput black(standin::LayerSize size) const;

    const RenderOptions& options_;
    const RunForm& form_;
    std::mutex mutex_;  // of what is shared
    std::shared_ptr<const FrameInput> still_;
    std::string stillDigest_;
};

}  // namespace tool
