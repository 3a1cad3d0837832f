// Gets the input pictures of a run ready, one frame at a time, on whatever thread asks; never two
// at once. A picture without a frame number in its name is read once.
#pragma once

#include <optional>
#include <string>

#include "RenderOptions.h"

namespace tool {

// One frame of a run.
struct FrameJob {
    int frame;
    std::string input;  // empty for an empty frame
    std::string output;
};

struct ReadyFrame {
    bool skip = false;  // the output is there and whole, and may stay
    standin::LayerSize layer{0, 0};
    standin::Image picture;  // at the scale of the run
};

class FrameReader {
  public:
    FrameReader(const RenderOptions& options, standin::Depth depth)
        : options_(options), depth_(depth) {}

    // Throws Failure (input).
    [[nodiscard]] ReadyFrame prepare(const FrameJob& job);

  private:
    [[nodiscard]] ReadyFrame load(const FrameJob& job) const;

    const RenderOptions& options_;
    standin::Depth depth_;
    std::optional<ReadyFrame> still_;
};

}  // namespace tool
