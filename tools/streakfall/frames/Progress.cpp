#include "Progress.h"

#include <unistd.h>

#include <algorithm>
#include <nlohmann/json.hpp>

#include "Say.h"

namespace tool {

namespace {

using Json = nlohmann::ordered_json;

ProgressStyle settle(ProgressStyle style) {
    const bool bar = style == ProgressStyle::kAuto || style == ProgressStyle::kBar;
    if (!bar) return style;
    return isatty(STDERR_FILENO) != 0 ? ProgressStyle::kBar : ProgressStyle::kPlain;
}

// File names need not be UTF-8, which JSON must be.
void putJsonLine(const Json& object) {
    say("{}\n", object.dump(-1, ' ', false, Json::error_handler_t::replace));
}

// "7.3 s", "12 min 5 s", "3 h 20 min".
std::string duration(double seconds) {
    if (seconds < 60) return fmt::format("{:.1f} s", seconds);
    const long whole = static_cast<long>(seconds);
    if (whole < 3600) return fmt::format("{} min {} s", whole / 60, whole % 60);
    return fmt::format("{} h {} min", whole / 3600, whole / 60 % 60);
}

}  // namespace

const char* outcomeName(Outcome outcome) {
    switch (outcome) {
        case Outcome::kWritten:
            return "written";
        case Outcome::kSkipped:
            return "skipped";
        case Outcome::kFailed:
            return "failed";
        case Outcome::kInterrupted:
            break;
    }
    return "interrupted";
}

Progress::Progress(ProgressStyle style, bool verbose, std::size_t frames)
    : style_(settle(style)), verbose_(verbose), frames_(frames) {}

Progress::~Progress() { clearBar(); }

void Progress::start(const std::string& description, int jobs) {
    begun_ = std::chrono::steady_clock::now();
    if (style_ == ProgressStyle::kJson)
        putJsonLine(
            {{"event", "start"}, {"frames", frames_}, {"jobs", jobs}, {"text", description}});
    else if (style_ != ProgressStyle::kNone)
        say("{}\n", description);
}

void Progress::within(double parts) {
    const double whole = static_cast<double>(done()) + parts;
    reached_ = std::clamp(whole / static_cast<double>(frames_), reached_, 1.0);
    if (style_ == ProgressStyle::kBar) drawBar();
}

void Progress::finished(const FrameJob& job, const MadeFrame& made) {
    if (made.outcome == Outcome::kWritten) ++totals_.written;
    if (made.outcome == Outcome::kSkipped) ++totals_.skipped;
    if (made.outcome == Outcome::kFailed) totals_.failed.push_back(job.frame);
    const bool failed = made.outcome == Outcome::kFailed;
    if (style_ == ProgressStyle::kJson)
        putJson(job, made);
    else if (failed || style_ == ProgressStyle::kPlain ||
             (style_ == ProgressStyle::kBar && verbose_))
        putLine(job, made);
    within(0);
}

void Progress::note(const std::string& text) {
    if (style_ != ProgressStyle::kNone) warn(text);
}

void Progress::warn(const std::string& text) {
    clearBar();
    if (style_ == ProgressStyle::kJson)
        putJsonLine({{"event", "note"}, {"text", text}});
    else
        say("{}\n", text);
}

void Progress::end(bool interrupted, int exitCode) {
    clearBar();
    if (style_ == ProgressStyle::kJson)
        putJsonLine({{"event", "end"},
                     {"written", totals_.written},
                     {"skipped", totals_.skipped},
                     {"failed", totals_.failed},
                     {"frames", frames_},
                     {"interrupted", interrupted},
                     {"seconds", seconds()},
                     {"exit", exitCode}});
    else if (style_ != ProgressStyle::kNone || interrupted)
        say("{}\n", summary(interrupted));
}

double Progress::seconds() const {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begun_).count();
}

std::size_t Progress::done() const {
    return totals_.written + totals_.skipped + totals_.failed.size();
}

// As the frames so far that were worked on; skipping one takes no time to speak of.
double Progress::secondsLeft() const {
    const std::size_t worked = totals_.written + totals_.failed.size();
    return worked == 0
               ? 0
               : seconds() / static_cast<double>(worked) * static_cast<double>(frames_ - done());
}

std::string Progress::summary(bool interrupted) const {
    if (interrupted)
        return fmt::format("interrupted: {} of {} written; resume with --existing skip",
                           totals_.written, frames_);
    std::string text = fmt::format("{} of {} written", totals_.written, frames_);
    if (totals_.skipped > 0) text += fmt::format(", {} skipped", totals_.skipped);
    if (!totals_.failed.empty())
        text +=
            fmt::format(", {} failed: {}", totals_.failed.size(), fmt::join(totals_.failed, ","));
    return text;
}

void Progress::drawBar() {
    constexpr int kCells = 30;
    const int perMille = static_cast<int>(reached_ * 1000);
    if (perMille == drawnPerMille_) return;
    drawnPerMille_ = perMille;
    const int filled = static_cast<int>(reached_ * kCells);
    std::string text =
        fmt::format("\r[{:#<{}}{:.<{}}] {}/{} frames, {:3} %", "", filled, "", kCells - filled,
                    done(), frames_, static_cast<int>(reached_ * 100));
    if (totals_.written > 0 && done() < frames_) text += ", " + duration(secondsLeft()) + " left";
    say("{}\x1b[K", text);
}

void Progress::clearBar() {
    if (drawnPerMille_ < 0) return;
    drawnPerMille_ = -1;
    say("\r\x1b[K");
}

void Progress::putLine(const FrameJob& job, const MadeFrame& made) {
    clearBar();
    const std::string count = fmt::format("[{}/{}] frame {}", done(), frames_, job.frame);
    if (made.outcome == Outcome::kFailed) return say("streakfall: {}: {}\n", count, made.trouble);
    std::string text = fmt::format("{} {} {}, {:.2f} s", count, outcomeName(made.outcome),
                                   job.output, made.seconds);
    if (verbose_ && made.outcome == Outcome::kWritten)
        text += fmt::format(", effect {:.1f} ms, encoding {:.1f} ms", made.effectSeconds * 1000,
                            made.encodeSeconds * 1000);
    if (done() < frames_ && totals_.written > 0) text += ", " + duration(secondsLeft()) + " left";
    say("{}\n", text);
}

void Progress::putJson(const FrameJob& job, const MadeFrame& made) {
    Json object = {{"event", "frame"},
                   {"frame", job.frame},
                   {"file", job.output},
                   {"outcome", outcomeName(made.outcome)},
                   {"done", done()},
                   {"frames", frames_},
                   {"seconds", made.seconds},
                   {"effect_ms", made.effectSeconds * 1000},
                   {"encode_ms", made.encodeSeconds * 1000},
                   {"left_seconds", secondsLeft()}};
    if (!made.trouble.empty()) object["trouble"] = made.trouble;
    putJsonLine(object);
}

}  // namespace tool
