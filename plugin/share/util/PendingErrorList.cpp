#include "share/util/PendingErrorList.h"

#include <algorithm>
#include <cstddef>

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

    // Order among the others stays.
    void dropThread(std::uintptr_t thread) {
        auto* const end = std::remove_if(entries, entries + count,
                                         [&](const auto& entry) { return entry.thread == thread; });
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
    const std::lock_guard lock(listLock);
    delete list;
    list = nullptr;
}

void PendingErrorList::clear() noexcept {
    const std::lock_guard lock(listLock);
    if (list != nullptr) list->dropThread(threadNumber());
}

PF_Err PendingErrorList::takeFirst() noexcept {
    const std::uintptr_t self = threadNumber();
    const std::lock_guard lock(listLock);
    if (list == nullptr) return PF_Err_NONE;
    PF_Err first = PF_Err_NONE;
    for (std::size_t index = 0; index < list->count && first == PF_Err_NONE; ++index) {
        if (list->entries[index].thread == self) first = list->entries[index].code;
    }
    list->dropThread(self);
    return first;
}

void RecordError(PF_Err code) noexcept {
    if (code == PF_Err_NONE) return;
    const std::lock_guard lock(listLock);
    if (list == nullptr || list->count == kRoom) return;
    list->entries[list->count++] = {threadNumber(), code};
}

}  // namespace AEUtil
