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
      session_(session),
      arguments_(arguments),
      jobs_(planJobs(options)),
      progress_(options.progress, options.verbose, jobs_.size()) {
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
    standin::Instance& instance = instanceFor(ready.layer);
    const standin::FrameRequest request = requestFor(job, std::move(ready));
    standin::FrameResult result = standin::renderFrame(instance, request);
    finishWriting();
    if (interruptSignal() != 0) return;  // whatever came out may be half a picture
    if (result.code != PF_Err_NONE)
        fail(Exit::kEffect, "frame {}: the effect answered with code {}{}{}", job.frame,
             result.code, result.message.empty() ? "" : ": ", result.message);
    if (!result.rendered || result.output.empty())
        fail(Exit::kEffect, "frame {}: the effect gave no picture", job.frame);
    startWriting(job, std::move(result.output), result.renderSeconds - result.transferSeconds);
}

standin::FrameRequest RenderRun::requestFor(const FrameJob& job, ReadyFrame ready) {
    standin::FrameRequest request;
    request.road = options_.road;
    request.input = std::move(ready.picture);
    request.currentTime = timeOf(job.frame, options_.rate, "--frames");
    request.timeStep = options_.rate.timeStep;
    request.timeScale = options_.rate.timeScale;
    request.downsampleX = request.downsampleY = {1, static_cast<A_u_long>(options_.divisor)};
    request.onProgress = [this](A_long done, A_long total) {
        if (total > 0) progress_.within(current_, static_cast<double>(done) / total);
        return interruptSignal() != 0;
    };
    return request;
}

standin::Instance& RenderRun::instanceFor(standin::LayerSize layer) {
    const bool fits = instance_ && instance_->layer().width == layer.width &&
                      instance_->layer().height == layer.height;
    if (!fits) {
        instance_.reset();
        instance_.emplace(session_.makeInstance(layer));
        storeValues(*instance_, arguments_, options_.rate);
    }
    return *instance_;
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
