#include "host/FrameCommand.h"

#include <chrono>

namespace standin {

PF_LRect boundsOf(const FrameRequest& request) {
    return {request.originX, request.originY, request.originX + request.picture().width(),
            request.originY + request.picture().height()};
}

FrameCommand::FrameCommand(Instance& instance, const FrameRequest& request, FrameResult& result)
    : Command(instance.host(), &instance), request_(request), result_(result) {
    instance.describeTo(*this);
    in.quality = request.quality;
    in.field = request.field;
    in.current_time = request.currentTime;
    in.time_step = request.timeStep;
    in.local_time_step = request.timeStep;
    in.time_scale = request.timeScale;
    in.total_time = request.totalTime;
    in.downsample_x = request.downsampleX;
    in.downsample_y = request.downsampleY;
    in.pixel_aspect_ratio = request.pixelAspectRatio;
    in.extent_hint = {0, 0, request.picture().width(), request.picture().height()};
}

PF_Err FrameCommand::onCall(CallKind kind) {
    result_.calls.push_back(kind);
    return Command::onCall(kind);
}

bool FrameCommand::reported(A_long done, A_long total) {
    result_.progress.push_back(done);
    return request_.onProgress && request_.onProgress(done, total);
}

PF_Err FrameCommand::cancelled() const {
    return request_.isCancelled && request_.isCancelled() ? PF_Err{PF_Interrupt_CANCEL}
                                                          : Command::cancelled();
}

void FrameCommand::transferring(const PF_EffectWorld& source, Depth depth) {
    if (request_.onTransfer) {
        request_.onTransfer(source, depth);
    }
}

void FrameCommand::transferred(double seconds) { result_.transferSeconds += seconds; }

void FrameCommand::runTimed(PF_Cmd command, PF_ParamDef** params, PF_LayerDef* output,
                            void* extra) {
    const auto start = std::chrono::steady_clock::now();
    result_.code = run(command, params, output, extra);
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
    result_.renderSeconds = taken.count();
    result_.message = out.return_msg;
    result_.rendered = true;
}

FrameWorlds::FrameWorlds(Host& host, const FrameRequest& request, const PF_LRect& inputRect,
                         const PF_LRect& outputRect)
    : ledger_(host.ledger()),
      watched_(host.offer().watchPixels),
      request_(request),
      left_(inputRect.left - request.originX),
      top_(inputRect.top - request.originY),
      input_(make(host, inputRect)),
      output_(make(host, outputRect)) {
    input_->load(request.picture(), left_, top_);
}

std::unique_ptr<WorldBuffer> FrameWorlds::make(Host& host, const PF_LRect& rect) const {
    auto buffer = WorldBuffer::make(rect.right - rect.left, rect.bottom - rect.top,
                                    request_.picture().depth(), host.offer(), false);
    if (!buffer) {
        throw std::bad_alloc();
    }
    PF_EffectWorld& world = buffer->world();
    world.origin_x = rect.left;
    world.origin_y = rect.top;
    world.pix_aspect_ratio = request_.pixelAspectRatio;
    return buffer;
}

void FrameWorlds::takeOutput(FrameResult& result) {
    if (watched_) {
        lookForDamage(result);
    }
    result.output = output_->takeImage();
}

void FrameWorlds::lookForDamage(FrameResult& result) const {
    if (!input_->holds(request_.picture(), left_, top_)) {
        ledger_.violation("the effect changed the input's pixels");
    }
    if (!input_->marginsIntact() || !output_->marginsIntact()) {
        ledger_.violation("the effect wrote outside the pixels of the input or the output");
    }
    result.unwritten = output_->untouchedPixels();
}

}  // namespace standin
