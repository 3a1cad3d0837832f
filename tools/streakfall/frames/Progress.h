// What the program says while it renders, on standard error: nothing, a line a frame, a JSON
// object a frame, or one bar that is drawn over itself. Calls come from one thread. Words that
// cannot be written are dropped.
#pragma once

#include <chrono>
#include <string>
#include <vector>

#include "FrameMaker.h"

namespace tool {

class Progress {
  public:
    // Auto is a bar when standard error is a terminal and lines otherwise; a bar asked for
    // without a terminal is lines, too. `verbose` adds the effect's own time to each line.
    Progress(ProgressStyle style, bool verbose, std::size_t frames);
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    // Leaves the bar's line.
    ~Progress();

    void start(const std::string& description, int jobs);
    // How far the frames at work are, 1 for each that is nearly whole. Only a bar shows it.
    void within(double parts);
    [[nodiscard]] bool wantsParts() const { return style_ == ProgressStyle::kBar; }
    void finished(const FrameJob& job, const MadeFrame& made);
    // A line of its own, whatever the style but none.
    void note(const std::string& text);
    // As note, and also when the style is none: what changes a picture is said in any case.
    void warn(const std::string& text);
    // The last word.
    void end(bool interrupted, int exitCode);

    struct Totals {
        std::size_t written = 0, skipped = 0;
        std::vector<int> failed;
    };
    [[nodiscard]] const Totals& totals() const { return totals_; }
    [[nodiscard]] double seconds() const;  // since the start

  private:
    [[nodiscard]] std::size_t done() const;
    [[nodiscard]] double secondsLeft() const;
    [[nodiscard]] std::string summary(bool interrupted) const;
    void drawBar();
    void clearBar();
    void putLine(const FrameJob& job, const MadeFrame& made);
    void putJson(const FrameJob& job, const MadeFrame& made);

    ProgressStyle style_;
    bool verbose_;
    std::size_t frames_;
    Totals totals_;
    std::chrono::steady_clock::time_point begun_ = std::chrono::steady_clock::now();
    double reached_ = 0;      // 0 to 1 of the run, for the bar
    int drawnPerMille_ = -1;  // -1 while no bar is on the line
};

// "written", "skipped", "failed" or "interrupted".
[[nodiscard]] const char* outcomeName(Outcome outcome);

}  // namespace tool
