// Renders the frames of a run in order. While one frame is in the effect, the next is read and
// the last is written, each on a thread of its own, so at most three pictures and their sources
// are in memory. The effect is called from the caller's thread only.
//
// A picture that cannot be read costs its own frame and the run goes on. A file that cannot be
// written, or an effect that fails, ends the run: the next frame would meet the same. Frames
// written before stay.
#pragma once

#include <future>
#include <optional>
#include <vector>

#include "Failure.h"
#include "FrameReader.h"
#include "FrameRenderer.h"
#include "Progress.h"

namespace tool {

class RenderRun {
  public:
    // All must outlive the run. Throws Failure when the run cannot begin.
    RenderRun(const RenderOptions& options, EffectSession& session,
              const ParamArguments& arguments);

    // The program's exit code: done, some failed, the code of the failure when no frame came
    // out, or 128 and the signal's number. Throws Failure for what ends the run.
    int run();

  private:
    void chooseDepth();
    void checkOutputs() const;
    [[nodiscard]] std::future<ReadyFrame> readAhead(std::size_t index);
    void renderFrame(const FrameJob& job, ReadyFrame ready);
    void startWriting(const FrameJob& job, standin::Image picture, double effectSeconds);
    void finishWriting();
    void reportFailure(const FrameJob& job, const Failure& failure);
    [[nodiscard]] int exitCode() const;

    const RenderOptions& options_;
    std::vector<FrameJob> jobs_;
    standin::Depth depth_ = standin::Depth::bits8;
    Progress progress_;
    FrameRenderer renderer_;
    std::optional<FrameReader> reader_;
    std::size_t current_ = 0;  // the job in the effect
    std::future<void> writing_;
    FrameReport written_;  // of the frame being written
    std::size_t good_ = 0;
    std::optional<Exit> firstFailure_;
};

// The frames and files, for --dry-run and for the run itself.
[[nodiscard]] std::vector<FrameJob> planJobs(const RenderOptions& options);

}  // namespace tool
