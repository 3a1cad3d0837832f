// Random frames of several instances, one after the other in one process, as long as one likes:
// memory must stay flat.
#include <malloc.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <fstream>
#include <optional>

#include "validate/Checks.h"
#include "validate/FaultCodes.h"
#include "validate/Frames.h"
#include "validate/RandomValues.h"

namespace validate {
namespace {

using namespace standin;

using Clock = std::chrono::steady_clock;

constexpr int kInstances = 6;
constexpr double kSecondsOfAFrame = 20;
constexpr double kTameThickness = 40;

// What the process may hold more than at a tenth of the run. A sanitizer keeps freed memory and
// notes about threads and allocations, and finds by itself what is lost.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr long kMostGrowthKib = 1 << 20;
#else
constexpr long kMostGrowthKib = 1024;
#endif

// Of this process, without what the allocator keeps for later.
long residentKib() {
    malloc_trim(0);
    long whole = 0, resident = 0;
    std::ifstream("/proc/self/statm") >> whole >> resident;
    return resident * (sysconf(_SC_PAGESIZE) / 1024);
}

class Soak {
  public:
    Soak(const Subject& subject, Report& report, int frames)
        : subject_(subject),
          report_(report),
          frames_(std::max(frames, 1)),
          play_(subject, report),
          random_(subject.seed) {
        for (auto& instance : instances_) instance.emplace(play_.host(), anyLayer());
    }

    void run() {
        const int tenth = std::max(frames_ / 10, 1);
        const auto start = Clock::now();
        for (int frame = 0; frame < frames_; ++frame) {
            place_ = text("seed ", subject_.seed, " frame ", frame);
            if (random_.oneIn(20)) renewOne();
            draw();
            if ((frame + 1) % tenth == 0) watchMemory();
        }
        report_.at("");
        for (auto& instance : instances_) instance.reset();
        play_.end();
        tell(std::chrono::duration<double>(Clock::now() - start).count());
    }

  private:
    LayerSize anyLayer() { return {random_.between(64, 320), random_.between(36, 180)}; }
    std::optional<Instance>& anyInstance() { return instances_[random_.below(kInstances)]; }

    // A new instance, a copy of another one, or one that is loaded, takes the place of one.
    void renewOne() {
        report_.at(place_ + " new instance");
        std::optional<Instance>& place = anyInstance();
        Instance& pattern = *anyInstance();
        switch (random_.below(3)) {
            case 0:
                place.emplace(play_.host(), anyLayer());
                break;
            case 1: {
                Instance copy = pattern.duplicate();
                place.emplace(std::move(copy));
                break;
            }
            default: {
                const auto saved = pattern.save();
                place.emplace(play_.host(), anyLayer(), saved);
            }
        }
    }

    // Inside the ranges; seldom as thick as they allow, which would be most of the time.
    void storeValues(Instance& instance) {
        storeRandomValues(instance, random_, Reach::inside);
        const ParamInfo* const thickness = play_.host().param(std::string("Thickness"));
        if (!thickness || random_.oneIn(100)) return;
        const double value = instance.value(thickness->id).part[0];
        instance.storeValue(thickness->id, Value::number(std::min(value, kTameThickness)));
    }

    // One frame in ten is to have a call of the host fail, if it comes to that call.
    std::optional<Fault> planFault(const Way& way) {
        if (!random_.oneIn(10)) return {};
        const auto kind = static_cast<CallKind>(random_.below(kCallKinds));
        if (!canFail(kind)) return {};
        const Fault fault{.scene = Scene::frame,
                          .kind = kind,
                          .n = random_.between(1, 10),
                          .injected = PF_Err_OUT_OF_MEMORY,
                          .depth = way.depth};
        play_.host().faults().failAt(fault.kind, fault.n, fault.injected);
        return fault;
    }

    void draw() {
        Instance& instance = *anyInstance();
        storeValues(instance);
        const Way way = random_.oneOf(std::span<const Way>(kWays));
        const LayerSize layer = instance.layer();
        const std::string what = text(layer.width, " x ", layer.height, ", ", name(way), ", ",
                                      describeValues(instance, play_.host()));
        report_.at(text(place_, " (", what, ")"));
        FrameRequest request = frameOf(way, layer.width, layer.height);
        request.currentTime = random_.between(-10, 1000);
        const std::optional<Fault> fault = planFault(way);
        const FrameResult result = renderFrame(instance, request);
        if (play_.host().faults().failures() > 0) {
            ++faults_;
            if (hostIsToBlame(*fault)) play_.host().ledger().clearViolations();
        } else {
            report_.expectSame<PF_Err>(result.code, 0, "the code");
        }
        play_.host().faults().clear();
        play_.expectTidy();
        watchTime(result.renderSeconds, what);
    }

    void watchTime(double seconds, const std::string& what) {
        report_.expect(seconds < kSecondsOfAFrame * subject_.patience,
                       text("the frame takes ", seconds, " seconds"));
        if (seconds <= slowest_) return;
        slowest_ = seconds;
        slowestFrame_ = text(place_, " (", what, ")");
    }

    void watchMemory() {
        memoryAtEnd_ = residentKib();
        if (memoryAtTenth_ == 0) memoryAtTenth_ = memoryAtEnd_;
        const long growth = memoryAtEnd_ - memoryAtTenth_;
        if (growth > kMostGrowthKib) {
            report_.stop(text("memory has grown by ", growth, " KiB since a tenth of the run"));
        }
    }

    void tell(double seconds) {
        report_.note(text(frames_, " frames in ", std::lround(seconds), " s"));
        report_.note(text(faults_, " failed calls of the host"));
        report_.note(
            text("memory ", memoryAtTenth_, " KiB at a tenth, ", memoryAtEnd_, " KiB at the end"));
        report_.note(text("the slowest ", std::lround(slowest_ * 1000), " ms: ", slowestFrame_));
    }

    const Subject& subject_;
    Report& report_;
    int frames_;
    Play play_;
    std::array<std::optional<Instance>, kInstances> instances_;
    Random random_;
    std::string place_;
    long faults_ = 0;
    long memoryAtTenth_ = 0, memoryAtEnd_ = 0;  // KiB
    double slowest_ = 0;
    std::string slowestFrame_;
};

void shortRun(const Subject& subject, Report& report) { Soak(subject, report, 200).run(); }

void longRun(const Subject& subject, Report& report) {
    Soak(subject, report, subject.soakFrames).run();
}

}  // namespace

std::span<const Check> soakChecks() {
    static constexpr Check kChecks[] = {
        {"soak.short", 7, 60, "200 random frames leave memory flat and nothing behind", shortRun},
        {"soak.long", 10, 1800, "So do 20000, or as many as are asked for", longRun},
    };
    return kChecks;
}

}  // namespace validate
