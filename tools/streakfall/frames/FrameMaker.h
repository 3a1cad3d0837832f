// Makes the frames of a run, from the input's file to the output's: one a thread, on shared inputs.
#pragma once

#include <atomic>
#include <map>
#include <string>
#include <vector>

#include "Failure.h"
#include "FrameInputs.h"
#include "FrameRenderer.h"
#include "RenderPlan.h"

namespace tool {

enum class Outcome { kWritten, kSkipped, kFailed, kInterrupted };

// One frame as it ended.
struct MadeFrame {
    Outcome outcome = Outcome::kInterrupted;
    std::string trouble;  // when failed
    Exit code = Exit::kDone;
    double seconds = 0;        // from the file to the file
    double effectSeconds = 0;  // in the effect's own commands
    double encodeSeconds = 0;
    std::string fingerprint;
    std::vector<unsigned char> bytes;  // of a stream, which others write in order
};

// What the makers of a run share; all outlives them.
struct MakerShare {
    const RenderOptions& options;
    const RunForm& form;
    EffectSession& session;
    const ParamArguments& arguments;
    FrameInputs& inputs;
    std::string program;                       // "streakfall 1.5.2"
    std::map<std::string, std::string> known;  // fingerprints by output, of an earlier report
};

class FrameMaker {
  public:
    explicit FrameMaker(const MakerShare& share);

    // Never throws Failure: it is in the outcome.
    [[nodiscard]] MadeFrame make(const FrameJob& job);

    // How far the frame at work is, 0 to 1. Safe from any thread.
    [[nodiscard]] double part() const { return part_; }

  private:
    void makeFrame(const FrameJob& job, MadeFrame& made);
    // The output is there, and is to be skipped when it was made from the same.
    [[nodiscard]] bool isThere(const FrameJob& job) const;
    [[nodiscard]] bool isMadeFromTheSame(const FrameJob& job, const std::string& fingerprint) const;

    const MakerShare& share_;
    FrameRenderer renderer_;
    std::atomic<double> part_{0};
};

}  // namespace tool
