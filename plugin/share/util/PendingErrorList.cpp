#include "share/util/PendingErrorList.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "platform/Lock.h"

namespace AEUtil {

namespace {

using streakfall::platform::Lock;
using streakfall::platform::threadNumber;

constexpr std::size_t kRoom = 256;

struct PendingCode {
    std::uintptr_t thread;
    PF_Err code;
};

struct Codes {
    PendingCode entries[kRoom];
    std::size_t count = 0;

    // The thread's codes behind the first `kept`. Order among the others stays.
    void dropThread(std::uintptr_t thread, std::size_t kept) {
        std::size_t met = 0;
        auto* const end = std::remove_if(entries, entries + count, [&](const auto& entry) {
            return entry.thread == thread && met++ >= kept;
        });
        count = static_cast<std::size_t>(end - entries);
    }
};

constinit Lock listLock;
constinit Codes* list = nullptr;  // under listLock

}  // namespace

bool PendingErrorList::create() {
    {
        const std::lock_guard lock(listLock);
        if (list != nullptr) return true;
    }
    // Made outside the lock: a failing allocation records, which takes the lock itself.
    Codes* const made = new Codes;
    const std::lock_guard lock(listLock);
    list = made;
    return made != nullptr;
}

void PendingErrorList::destroy() noexcept {
    Codes* gone = nullptr;
    {
        const std::lock_guard lock(listLock);
        gone = std::exchange(list, nullptr);
    }
    // Outside the lock, too: the host gets the block back, and may call the effect again from
    // there.
    delete gone;
}

std::size_t PendingErrorList::count() noexcept {
    const std::uintptr_t self = threadNumber();
    const std::lock_guard lock(listLock);
    if (list == nullptr) return 0;
    return static_cast<std::size_t>(
        std::count_if(list->entries, list->entries + list->count,
                      [&](const auto& entry) { return entry.thread == self; }));
}

void PendingErrorList::clear(std::size_t kept) noexcept {
    const std::lock_guard lock(listLock);
    if (list != nullptr) list->dropThread(threadNumber(), kept);
}

PF_Err PendingErrorList::takeFirst(std::size_t kept) noexcept {
    const std::uintptr_t self = threadNumber();
    const std::lock_guard lock(listLock);
    if (list == nullptr) return PF_Err_NONE;
    PF_Err first = PF_Err_NONE;
    std::size_t met = 0;
    for (std::size_t index = 0; index < list->count && first == PF_Err_NONE; ++index) {
        const PendingCode& entry = list->entries[index];
        if (entry.thread == self && met++ >= kept) first = entry.code;
    }
    list->dropThread(self, kept);
    return first;
}

void RecordError(PF_Err code) noexcept {
    if (code == PF_Err_NONE) return;
    const std::lock_guard lock(listLock);
    if (list == nullptr || list->count == kRoom) return;
    list->entries[list->count++] = {threadNumber(), code};
}

}  // namespace AEUtil
