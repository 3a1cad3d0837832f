#include "Progress.h"

#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <nlohmann/json.hpp>

#include "Say.h"

namespace tool {

namespace {

ProgressStyle settle(ProgressStyle style) {
    const bool bar = style == ProgressStyle::kAuto || style == ProgressStyle::kBar;
    if (!bar) return style;
    return isatty(STDERR_FILENO) != 0 ? ProgressStyle::kBar : ProgressStyle::kPlain;
}

// File names need not be UTF-8, which JSON must be.
void putJsonLine(const nlohmann::ordered_json& object) {
    say("{}\n", object.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace));
}

}  // namespace

Progress::Progress(ProgressStyle style, bool verbose, std::size_t frames)
    : style_(settle(style)), verbose_(verbose), frames_(frames) {}

Progress::~Progress() {
    if (drawnPerMille_ >= 0) say("\n");
}

void Progress::start(const std::string& description) {
    if (style_ == ProgressStyle::kJson)
        putJsonLine({{"event", "start"}, {"frames", frames_}, {"text", description}});
    else if (style_ != ProgressStyle::kNone)
        say("{}\n", description);
}

// The effect's reports may go past their total.
void Progress::within(std::size_t before, double part) {
    const double whole = static_cast<double>(before) + std::clamp(part, 0.0, 1.0);
    reached_ = std::max(reached_, whole / static_cast<double>(frames_));
    if (style_ == ProgressStyle::kBar) drawBar();
}

void Progress::finished(const FrameReport& report) {
    ++done_;
    switch (style_) {
        case ProgressStyle::kBar:
            if (verbose_ || report.outcome == "failed") {
                clearBar();
                putLine(report);
            }
            drawnPerMille_ = -1;
            within(done_, 0);
            break;
        case ProgressStyle::kPlain:
            putLine(report);
            break;
        case ProgressStyle::kJson:
            putJson(report);
            break;
        default:
            if (report.outcome == "failed") putLine(report);
    }
}

void Progress::note(const std::string& text) {
    if (style_ == ProgressStyle::kNone) return;
    clearBar();
    if (style_ == ProgressStyle::kJson)
        putJsonLine({{"event", "note"}, {"text", text}});
    else
        say("{}\n", text);
}

void Progress::drawBar() {
    constexpr int kCells = 30;
    const int perMille = static_cast<int>(reached_ * 1000);
    if (perMille == drawnPerMille_) return;
    drawnPerMille_ = perMille;
    const int filled = static_cast<int>(reached_ * kCells);
    say("\r[{:#<{}}{:.<{}}] {}/{} frames, {:3} %", "", filled, "", kCells - filled, done_, frames_,
        static_cast<int>(reached_ * 100));
}

void Progress::clearBar() {
    if (drawnPerMille_ < 0) return;
    drawnPerMille_ = -1;
    say("\r\x1b[K");
}

void Progress::putLine(const FrameReport& report) {
    if (report.outcome == "failed") {
        say("streakfall: frame {}: {}\n", report.frame, report.trouble);
        return;
    }
    say("[{}/{}] frame {} {} {}", done_, frames_, report.frame, report.outcome, report.file);
    if (verbose_ && report.outcome == "written")
        say(", effect {:.1f} ms", report.effectSeconds * 1000);
    say("\n");
}

void Progress::putJson(const FrameReport& report) {
    nlohmann::ordered_json object = {{"event", "frame"},
                                     {"frame", report.frame},
                                     {"file", report.file},
                                     {"outcome", report.outcome},
                                     {"done", done_},
                                     {"frames", frames_},
                                     {"effect_ms", report.effectSeconds * 1000}};
    if (!report.trouble.empty()) object["trouble"] = report.trouble;
    putJsonLine(object);
}

}  // namespace tool
