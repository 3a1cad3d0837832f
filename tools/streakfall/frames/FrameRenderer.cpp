#include "FrameRenderer.h"

#include <algorithm>
#include <utility>

#include "Failure.h"

namespace tool {

namespace {

std::string answerText(const standin::FrameResult& result) {
    if (result.code == PF_Err_NONE) return "gave no picture";
    return fmt::format("answered with code {}{}{}", result.code, result.message.empty() ? "" : ": ",
                       result.message);
}

}  // namespace

DrawnFrame drawOn(standin::Instance& instance, const FrameSettings& settings, FrameTask task) {
    bool ended = false;
    standin::FrameRequest request;
    request.road = settings.road;
    request.input = std::move(task.input);
    request.sharedInput = task.sharedInput;
    request.currentTime = timeOf(task.frame, settings.rate, "--frames");
    request.timeStep = settings.rate.timeStep;
    request.timeScale = settings.rate.timeScale;
    request.downsampleX = request.downsampleY = {1, static_cast<A_u_long>(settings.divisor)};
    // The effect's reports may go past their total.
    request.onProgress = [&](A_long done, A_long total) {
        const double part = total > 0 ? std::clamp(static_cast<double>(done) / total, 0.0, 1.0) : 0;
        if (task.progress) task.progress(part);
        return false;
    };
    request.isCancelled = [&] {
        ended = ended || (task.isCancelled && task.isCancelled());
        return ended;
    };
    standin::FrameResult result = standin::renderFrame(instance, request);
    if (ended) return {};
    if (result.code != PF_Err_NONE || !result.rendered || result.output.empty())
        fail(Exit::kEffect, "the effect {}", answerText(result));
    return {std::move(result.output), result.renderSeconds - result.transferSeconds};
}

DrawnFrame FrameRenderer::draw(FrameTask task) {
    standin::Instance& instance = instanceFor(task.layer);
    return drawOn(instance, settings_, std::move(task));
}

standin::Instance& FrameRenderer::instanceFor(standin::LayerSize layer) {
    const bool fits = instance_ && instance_->layer().width == layer.width &&
                      instance_->layer().height == layer.height;
    if (!fits) {
        instance_.reset();
        instance_.emplace(session_.makeInstance(layer));
        storeValues(*instance_, arguments_, settings_.rate);
    }
    return *instance_;
}

}  // namespace tool
