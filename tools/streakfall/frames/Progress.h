// What the program says while it renders, on standard error: nothing, a line a frame, a JSON
// object a frame, or one bar that is drawn over itself. Calls come from one thread.
#pragma once

#include <cstdio>
#include <string>

namespace tool {

enum class ProgressStyle { kAuto, kBar, kPlain, kJson, kNone };

// One frame as it ended.
struct FrameReport {
    int frame = 0;
    std::string file;
    std::string outcome;       // "written", "skipped" or "failed"
    double effectSeconds = 0;  // in the effect's own commands
    std::string trouble;       // when failed
};

class Progress {
  public:
    // Auto is a bar when standard error is a terminal and lines otherwise; a bar asked for
    // without a terminal is lines, too. `verbose` adds the effect's own time to each line.
    Progress(ProgressStyle style, bool verbose, std::size_t frames);
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    // Leaves the bar's line.
    ~Progress();

    void start(const std::string& description);
    // How far the effect is: all of the frames before, and 0 to 1 of the one in work. Only a bar
    // shows it. Frames count as done later, when their files are written.
    void within(std::size_t before, double part);
    void finished(const FrameReport& report);
    // A line of its own, whatever the style but none.
    void note(const std::string& text);

  private:
    void drawBar();
    void clearBar();
    void putLine(const FrameReport& report);
    void putJson(const FrameReport& report);

    ProgressStyle style_;
    bool verbose_;
    std::size_t frames_;
    std::size_t done_ = 0;
    double reached_ = 0;      // 0 to 1 of the run, for the bar
    int drawnPerMille_ = -1;  // -1 while no bar is on the line
};

}  // namespace tool
