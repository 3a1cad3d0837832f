#pragma once

#include <array>
#include <atomic>
#include <functional>
#include <string_view>
#include <utility>

#include "hostapi/hostapi.h"

namespace standin {

// Every way in which the effect calls the host.
enum class CallKind {
    acquireSuite,
    releaseSuite,
    newHandle,
    lockHandle,
    unlockHandle,
    disposeHandle,
    handleSize,
    newWorld,
    disposeWorld,
    getPixelFormat,
    fill,
    copy,
    transfer,
    checkoutParam,
    checkinParam,
    addParam,
    updateParamUI,
    isRenderEngine,
    checkoutLayer,
    checkoutLayerPixels,
    checkinLayerPixels,
    checkoutOutput,
    progress,
    abort,
    getPlatformData,
    count_,
};
inline constexpr int kCallKinds = static_cast<int>(CallKind::count_);

std::string_view name(CallKind kind);

// Counts the calls of each kind and makes chosen ones fail, so that a sweep over n reaches every
// failure. Owner: the host. Counting is safe from any thread; plans are made between commands.
class Faults {
  public:
    // The n-th call of the kind from now on (the first is 1) answers `code`; for calls that answer
    // with a pointer it is null instead. For `abort` and `progress` this is the user's cancel.
    void failAt(CallKind kind, long n, PF_Err code = 0);
    // As failAt, and every later call fails too.
    void failFrom(CallKind kind, long n, PF_Err code = 0);
    // No plans, and all counts 0.
    void clear();

    // Calls since the last failAt or failFrom of the kind, or clear.
    long calls(CallKind kind) const;
    // How many calls were made to fail since the last clear.
    long failures() const { return failures_.load(); }

    // Is told of every call before it is carried out. Set between commands.
    void watch(std::function<void()> watcher) { watcher_ = std::move(watcher); }

    // Counts a call; its planned code, or 0 when it goes well.
    PF_Err onCall(CallKind kind);

  private:
    struct Plan {
        std::atomic<long> calls{0};
        std::atomic<long> failFirst{0};  // 0: none
        std::atomic<long> failLast{0};
        std::atomic<PF_Err> code{0};
    };
    void plan(CallKind kind, long first, long last, PF_Err code);

    std::array<Plan, kCallKinds> plans_;
    std::atomic<long> failures_{0};
    std::function<void()> watcher_;
};

}  // namespace standin
