#include "FrameInputs.h"

#include "Failure.h"
#include "Fingerprint.h"
#include "PictureReader.h"
#include "Reduction.h"

namespace tool {

std::shared_ptr<const FrameInput> FrameInputs::picture(const FrameJob& job) {
    if (!isStill(job)) return std::make_shared<const FrameInput>(load(job));
    const std::lock_guard lock(mutex_);
    if (!still_) still_ = std::make_shared<const FrameInput>(load(job));
    return still_;
}

standin::LayerSize FrameInputs::sizeOf(const FrameJob& job) {
    if (isStill(job)) return picture(job)->layer;
    if (job.source != Source::kFile) return form_.size;
    const PictureTraits traits = readTraits(job.input, options_.reading);
    return {traits.width, traits.height};
}

std::string FrameInputs::digestOf(const FrameJob& job) {
    if (job.source != Source::kFile) return "black";
    if (!isStill(job)) return digestOfFile(job.input);
    const std::lock_guard lock(mutex_);
    if (stillDigest_.empty()) stillDigest_ = digestOfFile(job.input);
    return stillDigest_;
}

bool FrameInputs::isStill(const FrameJob& job) const {
    return job.source == Source::kEmpty ||
           (job.source == Source::kFile && !options_.input->hasNumber());
}

FrameInput FrameInputs::load(const FrameJob& job) const {
    if (job.source == Source::kEmpty) return black(options_.size);
    if (job.source == Source::kBlack) {
        if (form_.size.width == 0)
            fail(Exit::kInput, "{} is missing, and no file of the sequence tells a size",
                 job.input);
        return black(form_.size);
    }
    Picture picture = readPictureFile(job.input, form_.depth, options_.reading);
    const standin::LayerSize layer{picture.image.width(), picture.image.height()};
    if (options_.divisor > 1) picture.image = reduced(picture.image, options_.divisor);
    return {layer, std::move(picture.image), std::move(picture.traits)};
}

FrameInput FrameInputs::black(standin::LayerSize size) const {
    const auto side = [&](int length) {
        return (length + options_.divisor - 1) / options_.divisor;
    };
    return {
        size, standin::Image::opaqueBlack(side(size.width), side(size.height), form_.depth), {}};
}

}  // namespace tool
