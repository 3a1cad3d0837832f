#include "FrameReader.h"

#include <filesystem>

#include "PictureFile.h"
#include "Reduction.h"

namespace tool {

ReadyFrame FrameReader::prepare(const FrameJob& job) {
    std::error_code ignored;
    if (options_.existing == Existing::kSkip && std::filesystem::exists(job.output, ignored) &&
        isWholePicture(job.output)) {
        ReadyFrame skipped;
        skipped.skip = true;
        return skipped;
    }
    if (options_.input && options_.input->hasNumber()) return load(job);
    if (!still_) still_ = load(job);
    return *still_;
}

ReadyFrame FrameReader::load(const FrameJob& job) const {
    ReadyFrame ready;
    ready.picture = options_.input ? readPicture(job.input, depth_)
                                   : standin::Image::opaqueBlack(options_.size.width,
                                                                 options_.size.height, depth_);
    ready.layer = {ready.picture.width(), ready.picture.height()};
    ready.picture = reduced(ready.picture, options_.divisor);
    return ready;
}

}  // namespace tool
