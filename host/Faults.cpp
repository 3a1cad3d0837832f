#include "host/Faults.h"

#include <limits>

namespace standin {
namespace {

constexpr std::string_view kNames[] = {
    "acquire suite",
    "release suite",
    "new handle",
    "lock handle",
    "unlock handle",
    "dispose handle",
    "handle size",
    "new world",
    "dispose world",
    "get pixel format",
    "fill",
    "copy",
    "transfer",
    "check out parameter",
    "check in parameter",
    "add parameter",
    "update control",
    "ask for render engine",
    "check out layer",
    "check out layer pixels",
    "check in layer",
    "check out output",
    "progress",
    "abort",
    "get platform data",
};
static_assert(std::size(kNames) == kCallKinds);

PF_Err usualCode(CallKind kind) {
    switch (kind) {
        case CallKind::progress:
        case CallKind::abort:
            return PF_Interrupt_CANCEL;
        case CallKind::acquireSuite:
        case CallKind::releaseSuite:
            return PF_Err_BAD_CALLBACK_PARAM;
        case CallKind::getPlatformData:
            return PF_Err_INVALID_CALLBACK;
        default:
            return PF_Err_OUT_OF_MEMORY;
    }
}

}  // namespace

std::string_view name(CallKind kind) { return kNames[static_cast<int>(kind)]; }

void Faults::failAt(CallKind kind, long n, PF_Err code) { plan(kind, n, n, code); }

void Faults::failFrom(CallKind kind, long n, PF_Err code) {
    plan(kind, n, std::numeric_limits<long>::max(), code);
}

void Faults::plan(CallKind kind, long first, long last, PF_Err code) {
    Plan& plan = plans_[static_cast<int>(kind)];
    plan.calls = 0;
    plan.failFirst = first;
    plan.failLast = last;
    plan.code = code ? code : usualCode(kind);
}

void Faults::clear() {
    for (Plan& plan : plans_) {
        plan.calls = 0;
        plan.failFirst = 0;
        plan.failLast = 0;
    }
    failures_ = 0;
}

long Faults::calls(CallKind kind) const { return plans_[static_cast<int>(kind)].calls; }

PF_Err Faults::onCall(CallKind kind) {
    if (watcher_) {
        watcher_();
    }
    Plan& plan = plans_[static_cast<int>(kind)];
    const long n = ++plan.calls;
    const long first = plan.failFirst;
    if (first == 0 || n < first || n > plan.failLast) {
        return PF_Err_NONE;
    }
    ++failures_;
    return plan.code;
}

}  // namespace standin
