#include "host/FrameRender.h"

#include <stdexcept>

#include "host/FrameCommand.h"

namespace standin {
namespace {

void renderLegacy(Instance& instance, const FrameRequest& request, FrameResult& result) {
    const PF_LRect bounds = boundsOf(request);
    FrameWorlds worlds(instance.host(), request, bounds, bounds);
    const Time time{request.currentTime, request.timeScale};
    ParamArray params(instance, instance.host().global().numParams, time,
                      {request.downsampleX, request.downsampleY});
    params.inputLayer() = worlds.input();
    FrameCommand(instance, request, result)
        .runTimed(PF_Cmd_RENDER, params.pointers(), &worlds.output(), nullptr);
    worlds.takeOutput(result);
}

}  // namespace

FrameResult renderFrame(Instance& instance, const FrameRequest& request) {
    if (request.picture().empty()) {
        throw std::invalid_argument("a frame without an input picture");
    }
    FrameResult result;
    if (request.road == Road::smart) {
        renderSmart(instance, request, result);
    } else if (request.picture().depth() != Depth::float32) {
        renderLegacy(instance, request, result);
    } else {
        throw std::invalid_argument("float pixels come only on the smart road");
    }
    return result;
}

}  // namespace standin
