// Whole frames through the loaded module, as a host renders them.
//
// The time is that inside the render command less that inside the host's own transfer. Of it the
// counter "generation" is the part, in milliseconds, between the report that the background is
// done and the report that the lines are known.
#include <chrono>
#include <stdexcept>

#include "Bench.h"
#include "FieldCases.h"
#include "host/FrameRender.h"
#include "host/Host.h"
#include "host/Instance.h"

namespace bench {
namespace {

using standin::Depth;
using Clock = std::chrono::steady_clock;

// The effect's reports out of 100.
constexpr A_long kBackgroundDone = 10, kLinesKnown = 20;

struct NamedDepth {
    const char* name;
    Depth depth;
};
constexpr NamedDepth kDepths[] = {
    {"8", Depth::bits8}, {"16", Depth::bits16}, {"float", Depth::float32}};

standin::Module& module() {
    static standin::Module one(STREAKFALL_MODULE);
    return one;
}

void timeFrames(benchmark::State& state, const FieldCase& field, const FrameSize& size,
                Depth depth) {
    standin::Host host(module());
    if (host.start() != 0) throw std::runtime_error("the effect does not start");
    standin::Instance instance(host, {size.width, size.height});
    for (const FieldCase::Setting& setting : field.settings) {
        instance.storeValue(host.param(std::string(setting.name))->id,
                            standin::Value::number(setting.value));
    }

    standin::FrameRequest request;
    request.input = standin::Image::opaqueBlack(size.width, size.height, depth);
    Clock::time_point backgroundDone;
    double generation = 0, transfer = 0;  // seconds
    bool generating = false;
    request.onProgress = [&](A_long done, A_long) {
        if (done == kBackgroundDone) {
            backgroundDone = Clock::now();
            generating = true;
        } else if (done == kLinesKnown && generating) {
            generation += std::chrono::duration<double>(Clock::now() - backgroundDone).count();
            generating = false;
        }
        return false;
    };
    for ([[maybe_unused]] auto _ : state) {
        const standin::FrameResult result = standin::renderFrame(instance, request);
        if (result.code != 0) throw std::runtime_error("a frame failed: " + result.message);
        state.SetIterationTime(result.renderSeconds - result.transferSeconds);
        transfer += result.transferSeconds;
    }
    const auto perFrame = [](double seconds) {
        return benchmark::Counter(1000.0 * seconds, benchmark::Counter::kAvgIterations);
    };
    state.counters["generation"] = perFrame(generation);
    state.counters["transfer"] = perFrame(transfer);
}

}  // namespace

void registerFrames() {
    for (const FrameSize& size : kFrameSizes) {
        for (const FieldCase& field : fieldCases()) {
            for (const NamedDepth& depth : kDepths) {
                add(std::string("frame/") + field.name + "/" + size.name + "/" + depth.name,
                    [&](benchmark::State& state) { timeFrames(state, field, size, depth.depth); })
                    ->Repetitions(3);
            }
        }
    }
}

}  // namespace bench
