// Values of all parameters, inside their ranges and far past them, through a render of a small
// frame. A frame comes back without an error and without a pixel left out, whatever they are, or
// can be cancelled.
#include <chrono>
#include <cstring>

#include "FrameCase.h"
#include "Stage.h"

using namespace fuzz;
using namespace standin;

namespace {

Stage& stage() {
    static Stage only;
    return only;
}

const FrameFields& fields() {
    static const FrameFields all(stage().host());
    return all;
}

// The whole text, or as many of its lines as there is room for.
std::size_t give(std::string_view text, std::uint8_t* data, std::size_t room) {
    if (text.size() > room) text = text.substr(0, text.rfind('\n', room - 1) + 1);
    std::memcpy(data, text.data(), text.size());
    return text.size();
}

// Far past the ranges there can be millions of lines: whoever renders them loses patience, and is
// heard at the next tenth of them.
void drawOrCancel(Instance& instance, FrameRequest request) {
    using Clock = std::chrono::steady_clock;
    const auto start = Clock::now();
    bool cancelled = false;
    request.onProgress = [&](A_long, A_long) {
        cancelled = Clock::now() - start > std::chrono::seconds(5);
        if (cancelled) stage().host().cancel();
        return cancelled;
    };
    const FrameResult result = renderFrame(instance, request);
    stage().host().clearCancel();
    if (cancelled) return;
    expect(result.code == PF_Err_NONE, "the frame's code is ", result.code);
    expect(result.unwritten == 0, result.unwritten, " pixels of the output were never written");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const FrameCase frame(fields(), textOf(data, size));
    Instance instance(stage().host(), frame.layer());
    frame.storeIn(instance);
    drawOrCancel(instance, frame.request());
    instance.updatePanel();
    stage().expectTidy();
    return 0;
}

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t room, unsigned seed) {
    validate::Random random(seed);
    FrameCase frame(fields(), textOf(data, size));
    frame.change(random);
    return give(frame.text(), data, room);
}

extern "C" std::size_t LLVMFuzzerCustomCrossOver(const std::uint8_t* first, std::size_t firstSize,
                                                 const std::uint8_t* second, std::size_t secondSize,
                                                 std::uint8_t* data, std::size_t room,
                                                 unsigned seed) {
    validate::Random random(seed);
    FrameCase frame(fields(), textOf(first, firstSize));
    frame.takeFrom(FrameCase(fields(), textOf(second, secondSize)), random);
    return give(frame.text(), data, room);
}
