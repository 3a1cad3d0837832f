// Renders the frames of a run, several at once: each on a thread of its own from the input's file
// to the output's, all through one module. What is said, and what a stream gets, comes in the order
// asked for, whatever the number of threads, and so does the end of the run.
//
// A picture that cannot be read costs its own frame and the run goes on. A file that cannot be
// written, or an effect that fails, ends the run: the next frame would meet the same. Frames
// written before, or at the same time on other threads, stay.
#pragma once

#include <condition_variable>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

#include "FrameMaker.h"
#include "Progress.h"
#include "RunReport.h"

namespace tool {

class RenderRun {
  public:
    // All must outlive the run. `program` is its name and version. Throws Failure when the run
    // cannot begin.
    RenderRun(const RenderOptions& options, EffectSession& session, const ParamArguments& arguments,
              const std::string& program);

    // The program's exit code: done, some failed, the code of the failure when no frame came
    // out or the run ended there, or 128 and the signal's number. Throws Failure (output) when the
    // report cannot be written.
    int run();

  private:
    void checkOutputs() const;
    void sayWhatHolds();
    void clearOld();
    void work(FrameMaker& maker);
    [[nodiscard]] std::optional<std::size_t> nextJob();
    [[nodiscard]] std::optional<MadeFrame> nextMade();
    void take(const FrameJob& job, MadeFrame made);
    void writeStream(MadeFrame& made) const;
    [[nodiscard]] int exitCode() const;

    const RenderOptions& options_;
    const ParamArguments& arguments_;
    std::vector<FrameJob> jobs_;
    RunForm form_;
    FrameInputs inputs_;
    MakerShare share_;
    Progress progress_;
    RunReport report_;
    std::vector<std::unique_ptr<FrameMaker>> makers_;
    std::optional<Exit> firstFailure_;
    std::optional<Exit> endedBy_;

    std::mutex mutex_;  // of what follows
    std::condition_variable changed_;
    std::map<std::size_t, MadeFrame> made_;  // not yet taken, by job
    std::size_t begun_ = 0;                  // jobs, by the makers
    std::size_t taken_ = 0;                  // jobs, in order
    int working_ = 0;                        // makers
    bool stopped_ = false;
};

// The most that the pictures of a frame take at once, in bytes; see the help of --jobs.
[[nodiscard]] std::size_t mostBytesOfFrame(standin::LayerSize picture, standin::Depth depth);

}  // namespace tool
