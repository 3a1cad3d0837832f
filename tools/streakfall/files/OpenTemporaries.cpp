#include "OpenTemporaries.h"

#include <unistd.h>

#include <array>
#include <atomic>
#include <climits>
#include <cstring>

namespace tool {

namespace {

enum : int { kFree, kTaken, kReady };

struct Slot {
    std::atomic<int> state{kFree};
    char path[PATH_MAX];
};
static_assert(std::atomic<int>::is_always_lock_free, "a signal handler may touch nothing else");

std::array<Slot, 64> slots;

}  // namespace

OpenTemporary::OpenTemporary(const std::string& path) {
    if (path.size() >= PATH_MAX) return;
    for (std::size_t i = 0; i < slots.size(); ++i) {
        int free = kFree;
        if (!slots[i].state.compare_exchange_strong(free, kTaken)) continue;
        std::memcpy(slots[i].path, path.c_str(), path.size() + 1);
        slots[i].state = kReady;
        slot_ = static_cast<int>(i);
        return;
    }
}

OpenTemporary::~OpenTemporary() {
    if (slot_ >= 0) slots[static_cast<std::size_t>(slot_)].state = kFree;
}

void OpenTemporary::dropAll() noexcept {
    for (Slot& slot : slots)
        if (slot.state == kReady) unlink(slot.path);
}

}  // namespace tool
