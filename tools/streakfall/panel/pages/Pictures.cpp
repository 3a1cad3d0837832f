#include "Pictures.h"

#include <bit>
#include <chrono>
#include <cmath>

#include "FrameRenderer.h"

namespace tool::panel {

namespace {

using Clock = std::chrono::steady_clock;
using standin::Image;

double millisecondsSince(Clock::time_point start) {
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

double rounded(double milliseconds) { return std::round(milliseconds * 100) / 100; }

// Alpha, red, green and blue in memory become red, green, blue and alpha.
standin::BlockBytes alphaLast(const Image& image) {
    static_assert(std::endian::native == std::endian::little);
    standin::BlockBytes bytes = standin::BlockBytes::unwritten(image.size());
    const auto* from = reinterpret_cast<const std::uint32_t*>(image.data());
    auto* to = reinterpret_cast<std::uint32_t*>(bytes.data());
    const std::size_t count = image.size() / sizeof(std::uint32_t);
    for (std::size_t i = 0; i < count; ++i) to[i] = from[i] >> 8 | from[i] << 24;
    return bytes;
}

Answer answerOf(const Image& image, const PictureRequest& request, double effectMs,
                Clock::time_point start) {
    standin::BlockBytes bytes = alphaLast(image);
    Json head = {{"width", image.width()},        {"height", image.height()},
                 {"frame", request.frame},        {"divisor", request.divisor},
                 {"effectMs", rounded(effectMs)}, {"totalMs", rounded(millisecondsSince(start))}};
    if (!request.state.is_null()) head["state"] = request.state;
    Answer answer = jsonAnswer(head);
    answer.type = "application/octet-stream";
    answer.headers["X-Head-Bytes"] = std::to_string(answer.text.size());
    answer.bytes = std::move(bytes);
    return answer;
}

standin::Instance& instanceFor(Studio& studio, Drawer& drawer, standin::LayerSize layer) {
    const bool fits = drawer.instance && drawer.instance->layer().width == layer.width &&
                      drawer.instance->layer().height == layer.height;
    if (!fits) {
        const std::lock_guard lock(studio.commands());
        drawer.instance.reset();
        drawer.instance.emplace(studio.session().makeInstance(layer));
    }
    return *drawer.instance;
}

[[noreturn]] void superseded(const Studio& studio, const PictureRequest& request) {
    if (studio.hasEnded()) refuse(Status::kEnding, "the program is ending");
    Json more = Json::object();
    if (!request.state.is_null()) more["state"] = request.state;
    throw Refusal(Status::kConflict, "a newer request took its place", more);
}

}  // namespace

Answer drawPicture(Studio& studio, Page& page, const Values& values,
                   const PictureRequest& request) {
    const auto start = Clock::now();
    Drawer& drawer = page.drawer(request.thumbnail);
    const auto turn = studio.queue().enter(drawer.slot, request.turn);
    if (!turn) superseded(studio, request);
    const auto input = studio.backdrops().picture(request.backdrop, request.frame, request.divisor);
    standin::Instance& instance = instanceFor(studio, drawer, input->layer);
    values.storeIn(instance, studio.params(), studio.rate());
    FrameTask task;
    task.frame = request.frame;
    task.layer = input->layer;
    task.sharedInput = &input->image;
    task.isCancelled = [&] { return turn->isOver(); };
    const DrawnFrame drawn =
        drawOn(instance, {studio.rate(), request.divisor, standin::Road::smart}, std::move(task));
    if (drawn.picture.empty()) superseded(studio, request);
    return answerOf(drawn.picture, request, drawn.effectSeconds * 1000, start);
}

Answer barePicture(Studio& studio, const PictureRequest& request) {
    const auto start = Clock::now();
    const auto input = studio.backdrops().picture(request.backdrop, request.frame, request.divisor);
    return answerOf(input->image, request, 0, start);
}

}  // namespace tool::panel
