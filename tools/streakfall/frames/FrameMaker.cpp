#include "FrameMaker.h"

#include <chrono>
#include <filesystem>
#include <span>

#include "Fingerprint.h"
#include "Interrupt.h"
#include "PictureReader.h"
#include "PictureWriter.h"
#include "SafeFile.h"

namespace tool {

namespace {

using Clock = std::chrono::steady_clock;

double secondsSince(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

void fails(MadeFrame& made, Exit code, const std::string& trouble) {
    made.outcome = Outcome::kFailed;
    made.code = code;
    made.trouble = trouble;
}

}  // namespace

FrameMaker::FrameMaker(const MakerShare& share)
    : share_(share),
      renderer_(share.session, share.arguments,
                {share.form.rate, share.options.divisor, share.options.road}) {}

MadeFrame FrameMaker::make(const FrameJob& job) {
    MadeFrame made;
    const auto start = Clock::now();
    part_ = 0;
    try {
        makeFrame(job, made);
    } catch (const Failure& failure) {
        fails(made, failure.code(), failure.what());
    } catch (const std::bad_alloc&) {
        fails(made, Exit::kEffect, "out of memory; fewer --jobs need less");
    } catch (const std::exception& error) {
        fails(made, Exit::kEffect, error.what());
    }
    made.seconds = secondsSince(start);
    part_ = 0;
    return made;
}

void FrameMaker::makeFrame(const FrameJob& job, MadeFrame& made) {
    made.outcome = Outcome::kSkipped;
    if (job.source == Source::kNone) return;
    std::shared_ptr<const FrameInput> input;
    standin::LayerSize layer;
    const bool mayStay = isThere(job);
    if (mayStay) {
        layer = share_.inputs.sizeOf(job);  // the pixels may not be needed
    } else {
        input = share_.inputs.picture(job);
        layer = input->layer;
    }
    const standin::Instance& instance = renderer_.instanceFor(layer);
    made.fingerprint = fingerprintOf(job, share_.inputs.digestOf(job), share_.options, share_.form,
                                     share_.session.version(), instance);
    if (mayStay && isMadeFromTheSame(job, made.fingerprint)) return;

    made.outcome = Outcome::kInterrupted;
    const std::string look = lookInWords(job.frame, share_.form.rate, instance);
    if (!input) input = share_.inputs.picture(job);
    FrameTask task{job.frame,
                   input->layer,
                   {},
                   [this](double part) { part_ = part; },
                   [] { return interruptSignal() != 0; },
                   &input->image};
    const DrawnFrame drawn = renderer_.draw(std::move(task));
    const PictureTraits traits = input->traits;
    input.reset();  // only a still is kept while this is encoded
    if (drawn.picture.empty()) return;
    made.effectSeconds = drawn.effectSeconds;
    const auto start = Clock::now();
    made.bytes = encodePicture(job.output, drawn.picture, share_.form.output, traits,
                               {share_.program, made.fingerprint, look});
    made.encodeSeconds = secondsSince(start);
    if (!share_.options.streams()) {
        writeWhole(job.output, std::as_bytes(std::span(made.bytes)));
        made.bytes = {};
    }
    made.outcome = Outcome::kWritten;
}

bool FrameMaker::isThere(const FrameJob& job) const {
    std::error_code ignored;
    return share_.options.existing == Existing::kSkip && !share_.options.streams() &&
           std::filesystem::exists(job.output, ignored);
}

// By the file itself or, where its metadata was lost, by the report of the run that wrote it.
bool FrameMaker::isMadeFromTheSame(const FrameJob& job, const std::string& fingerprint) const {
    const std::string stored = storedFingerprint(job.output);
    if (!stored.empty()) return stored == fingerprint;
    const auto known = share_.known.find(job.output);
    return known != share_.known.end() && known->second == fingerprint &&
           isWholePicture(job.output);
}

}  // namespace tool
