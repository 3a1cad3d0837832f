#include "RenderRun.h"

#include <filesystem>

#include "Failure.h"
#include "FrameList.h"
#include "Interrupt.h"
#include "PictureFile.h"
#include "SafeFile.h"

namespace tool {

std::vector<FrameJob> planJobs(const RenderOptions& options) {
    std::vector<FrameJob> jobs;
    for (const int frame : options.frames) {
        FrameJob job{frame, options.input ? options.input->fileFor(frame) : "",
                     options.output.fileFor(frame)};
        std::error_code ignored;
        if (std::filesystem::equivalent(job.input, job.output, ignored))
            failUsage("--output: frame {} would overwrite its own input {}", frame, job.input);
        jobs.push_back(std::move(job));
    }
    return jobs;
}

RenderRun::RenderRun(const RenderOptions& options, EffectSession& session,
                     const ParamArguments& arguments)
    : options_(options),
      jobs_(planJobs(options)),
      progress_(options.progress, options.verbose, jobs_.size()),
      renderer_(session, arguments, {options.rate, options.divisor, options.road}) {
    checkOutputs();
    progress_.start(describeFrames(options.frames));
    for (const std::string& warning : arguments.warnings()) progress_.note("note: " + warning);
    chooseDepth();
    reader_.emplace(options, depth_);
}

int RenderRun::run() {
    std::future<ReadyFrame> next = readAhead(0);
    for (current_ = 0; current_ < jobs_.size() && interruptSignal() == 0; ++current_) {
        const FrameJob& job = jobs_[current_];
        std::future<ReadyFrame> reading = std::move(next);
        reading.wait();
        next = readAhead(current_ + 1);
        try {
            ReadyFrame ready = reading.get();
            if (ready.skip) {
                finishWriting();
                ++good_;
                progress_.finished({job.frame, job.output, "skipped", 0, ""});
            } else {
                renderFrame(job, std::move(ready));
            }
        } catch (const Failure& failure) {
            if (failure.code() != Exit::kInput) throw;
            finishWriting();
            reportFailure(job, failure);
        }
    }
    finishWriting();
    return exitCode();
}

void RenderRun::chooseDepth() {
    std::string reason = options_.input ? "as asked" : "no input";
    if (options_.depth) {
        depth_ = *options_.depth;
    } else {
        reason = "no input can be read";
        for (const FrameJob& job : jobs_) {
            const auto depth = pictureDepth(job.input);
            if (!depth) continue;
            depth_ = *depth;
            reason = "from " + job.input;
            break;
        }
    }
    if (depth_ == standin::Depth::float32 && options_.road == standin::Road::legacy)
        failUsage("--road legacy takes 8 or 16 bits; add --depth 16");
    progress_.note(fmt::format("{} bits a channel ({}), written as {}", standin::bitDepth(depth_),
                               reason, describeOutput(jobs_[0].output, depth_)));
}

void RenderRun::checkOutputs() const {
    for (const FrameJob& job : jobs_) {
        std::error_code ignored;
        if (options_.existing == Existing::kError && std::filesystem::exists(job.output, ignored))
            fail(Exit::kOutput, "{} exists already (--existing error)", job.output);
    }
    checkWritable(jobs_[0].output);
}

std::future<ReadyFrame> RenderRun::readAhead(std::size_t index) {
    if (index >= jobs_.size()) return {};
    return std::async(std::launch::async, [this, index] { return reader_->prepare(jobs_[index]); });
}

void RenderRun::renderFrame(const FrameJob& job, ReadyFrame ready) {
    FrameTask task{job.frame, ready.layer, std::move(ready.picture),
                   [this](double part) { progress_.within(current_, part); },
                   [] { return interruptSignal() != 0; }};
    DrawnFrame drawn;
    try {
        drawn = renderer_.draw(std::move(task));
    } catch (const Failure& failure) {
        throw Failure(failure.code(), fmt::format("frame {}: {}", job.frame, failure.what()));
    }
    finishWriting();
    if (!drawn.picture.empty()) startWriting(job, std::move(drawn.picture), drawn.effectSeconds);
}

void RenderRun::startWriting(const FrameJob& job, standin::Image picture, double effectSeconds) {
    written_ = {job.frame, job.output, "written", effectSeconds, ""};
    writing_ = std::async(std::launch::async, [path = job.output, image = std::move(picture)] {
        writePicture(path, image);
    });
}

void RenderRun::finishWriting() {
    if (!writing_.valid()) return;
    writing_.get();
    ++good_;
    progress_.finished(written_);
}

void RenderRun::reportFailure(const FrameJob& job, const Failure& failure) {
    if (!firstFailure_) firstFailure_ = failure.code();
    progress_.finished({job.frame, job.output, "failed", 0, failure.what()});
}

int RenderRun::exitCode() const {
    constexpr int kEndedBySignal = 128;  // as shells tell it
    if (interruptSignal() != 0) return kEndedBySignal + interruptSignal();
    if (!firstFailure_) return static_cast<int>(Exit::kDone);
    return static_cast<int>(good_ > 0 ? Exit::kSomeFailed : *firstFailure_);
}

}  // namespace tool
