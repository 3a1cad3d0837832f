#include "RenderRun.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <set>

#include "FrameList.h"
#include "Interrupt.h"
#include "PictureWriter.h"
#include "SafeFile.h"
#include "host/Blocks.h"

namespace tool {

// Input, output and line buffer in the effect, and one picture on its way in or out.
std::size_t mostBytesOfFrame(standin::LayerSize picture, standin::Depth depth) {
    constexpr std::size_t kPictures = 4;
    return kPictures * static_cast<std::size_t>(picture.width) *
           static_cast<std::size_t>(picture.height) *
           static_cast<std::size_t>(standin::bytesPerPixel(depth));
}

namespace {

constexpr int kEndedBySignal = 128;  // and the signal's number, as shells tell it

std::string storedDefaultsNote(const EffectSession& session) {
    const std::string file = session.settingsFile();
    std::error_code ignored;
    return std::filesystem::exists(file, ignored) ? "starting from the stored defaults in " + file
                                                  : "no stored defaults: there is no file " + file;
}

}  // namespace

RenderRun::RenderRun(const RenderOptions& options, EffectSession& session,
                     const ParamArguments& arguments, const std::string& program)
    : options_(options),
      arguments_(arguments),
      jobs_(planJobs(options)),
      form_(planForm(options)),
      inputs_(options, form_),
      share_{options,
             form_,
             session,
             arguments,
             inputs_,
             program,
             reportedFingerprints(options.report)},
      progress_(options.progress, options.verbose, jobs_.size()) {
    useOneThreadEach();
    checkOutputs();
    sayWhatHolds();
    clearOld();
}

int RenderRun::run() {
    const int count = std::min<int>(options_.jobs, static_cast<int>(jobs_.size()));
    standin::blocks::keep(mostBytesOfFrame(form_.size, form_.depth) *
                          static_cast<std::size_t>(count));
    std::vector<std::thread> threads;
    working_ = count;
    for (int i = 0; i < count; ++i) makers_.push_back(std::make_unique<FrameMaker>(share_));
    for (const auto& maker : makers_) threads.emplace_back([&] { work(*maker); });
    while (auto made = nextMade()) take(jobs_[taken_ - 1], std::move(*made));
    for (std::thread& thread : threads) thread.join();
    const int code = exitCode();
    progress_.end(code > kEndedBySignal, code);
    if (!options_.report.empty()) report_.write(options_.report, share_, progress_, code);
    return code;
}

void RenderRun::checkOutputs() const {
    if (options_.streams()) {
        if (isatty(STDOUT_FILENO) != 0)
            failUsage("--output -: standard output is a terminal; send it into a pipe or a file");
        return;
    }
    for (const FrameJob& job : jobs_) {
        std::error_code ignored;
        if (options_.existing == Existing::kError && std::filesystem::exists(job.output, ignored))
            fail(Exit::kOutput, "{} exists already (--existing error)", job.output);
        if (!options_.report.empty() &&
            (job.output == options_.report || job.input == options_.report))
            failUsage("--report: {} is a picture of frame {}", options_.report, job.frame);
    }
    if (!jobs_.empty()) checkWritable(jobs_[0].output);
    if (!options_.report.empty()) checkWritable(options_.report);
}

void RenderRun::sayWhatHolds() {
    progress_.start(describeFrames(options_.frames), options_.jobs);
    for (const std::string& warning : arguments_.warnings()) progress_.warn("note: " + warning);
    if (options_.storedDefaults) progress_.note(storedDefaultsNote(share_.session));
    if (!form_.dropped.empty()) progress_.note("note: " + form_.dropped);
    if (!form_.readAs.empty()) progress_.note(form_.readAs);
    progress_.note(fmt::format(
        "{} bits a channel ({}), written as {}, {}, {:.6g} frames a second",
        standin::bitDepth(form_.depth), form_.reason, form_.output.label,
        form_.output.alpha == Alpha::kStraight ? "straight alpha" : "premultiplied alpha",
        static_cast<double>(form_.rate.timeScale) / form_.rate.timeStep));
    constexpr std::size_t kMiB = 1u << 20;
    const std::size_t bytes =
        static_cast<std::size_t>(options_.jobs) * mostBytesOfFrame(form_.size, form_.depth);
    if (bytes > 0)
        progress_.note(fmt::format("{} at once, {} MiB of pictures at most", options_.jobs,
                                   (bytes + kMiB - 1) / kMiB));
}

// All files of a run lie in one folder: only the name of a file has the frame's number.
void RenderRun::clearOld() {
    if (options_.streams() || jobs_.empty()) return;
    std::set<std::string> names;
    for (const FrameJob& job : jobs_)
        names.insert(std::filesystem::path(job.output).filename().string());
    const std::string folder = std::filesystem::path(jobs_[0].output).parent_path().string();
    for (const std::string& path : clearLeftovers(folder, names))
        progress_.note("note: removed " + path + ", left by a run that was killed");
}

void RenderRun::work(FrameMaker& maker) {
    while (const auto index = nextJob()) {
        MadeFrame made = maker.make(jobs_[*index]);
        const std::lock_guard lock(mutex_);
        made_.emplace(*index, std::move(made));
        changed_.notify_all();
    }
    const std::lock_guard lock(mutex_);
    --working_;
    changed_.notify_all();
}

// Makers stay close to what was taken, so that a slow frame, or a slow reader of a stream, does not
// heap up the ones behind it.
std::optional<std::size_t> RenderRun::nextJob() {
    std::unique_lock lock(mutex_);
    const std::size_t ahead = 2 * static_cast<std::size_t>(options_.jobs);
    const auto ended = [&] { return stopped_ || interruptSignal() != 0 || begun_ == jobs_.size(); };
    changed_.wait(lock, [&] { return ended() || begun_ < taken_ + ahead; });
    if (ended()) return std::nullopt;
    return begun_++;
}

// Waits for the next in order. Behind an end, whatever frames were still made.
std::optional<MadeFrame> RenderRun::nextMade() {
    constexpr std::chrono::milliseconds kRedraw(100);
    std::unique_lock lock(mutex_);
    while (made_.find(taken_) == made_.end()) {
        if (taken_ == jobs_.size() || (working_ == 0 && made_.empty())) return std::nullopt;
        if (working_ == 0) {
            taken_ = made_.begin()->first;
            break;
        }
        changed_.wait_for(lock, kRedraw);
        if (interruptSignal() != 0) changed_.notify_all();  // makers that wait
        double parts = 0;
        for (const auto& maker : makers_) parts += maker->part();
        if (progress_.wantsParts()) progress_.within(parts);
    }
    MadeFrame made = std::move(made_.extract(taken_).mapped());
    ++taken_;
    changed_.notify_all();
    return made;
}

void RenderRun::take(const FrameJob& job, MadeFrame made) {
    // What fails beside the failure that ended the run met the same.
    const bool again = endedBy_ && made.outcome == Outcome::kFailed;
    if (made.outcome == Outcome::kInterrupted || again) return;
    if (made.outcome == Outcome::kWritten && options_.streams() && !endedBy_) writeStream(made);
    progress_.finished(job, made);
    report_.add(job, made);
    if (made.outcome != Outcome::kFailed) return;
    if (!firstFailure_) firstFailure_ = made.code;
    if (made.code == Exit::kInput) return;
    endedBy_ = made.code;
    const std::lock_guard lock(mutex_);
    stopped_ = true;
    changed_.notify_all();
}

void RenderRun::writeStream(MadeFrame& made) const {
    std::span<const unsigned char> bytes(made.bytes);
    while (!bytes.empty()) {
        const ssize_t count = ::write(STDOUT_FILENO, bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) {
            made.outcome = Outcome::kFailed;
            made.code = Exit::kOutput;
            made.trouble = fmt::format("cannot write standard output: {}", std::strerror(errno));
            return;
        }
        bytes = bytes.subspan(static_cast<std::size_t>(count));
    }
}

int RenderRun::exitCode() const {
    const Progress::Totals& totals = progress_.totals();
    const bool whole = totals.written + totals.skipped + totals.failed.size() == jobs_.size();
    if (interruptSignal() != 0 && !whole) return kEndedBySignal + interruptSignal();
    if (endedBy_) return static_cast<int>(*endedBy_);
    if (!firstFailure_) return static_cast<int>(Exit::kDone);
    return static_cast<int>(totals.written + totals.skipped > 0 ? Exit::kSomeFailed
                                                                : *firstFailure_);
}

}  // namespace tool
