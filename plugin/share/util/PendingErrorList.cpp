#include "share/util/PendingErrorList.h"

#include <algorithm>
#include <cstddef>
#include <mutex>
#include <thread>

namespace AEUtil {

namespace {

constexpr std::size_t kRoom = 256;

struct PendingCode {
    std::thread::id thread;
    PF_Err code;
};

struct Codes {
    PendingCode entries[kRoom];
    std::size_t count = 0;

    // Order among the others stays.
    void dropThread(std::thread::id thread) {
        auto* const end = std::remove_if(entries, entries + count,
                                         [&](const auto& entry) { return entry.thread == thread; });
        count = static_cast<std::size_t>(end - entries);
    }
};

std::mutex listMutex;
constinit Codes* list = nullptr;  // under listMutex

}  // namespace

bool PendingErrorList::create() {
    {
        const std::lock_guard lock(listMutex);
        if (list != nullptr) return true;
    }
    // Made outside the lock: a failing allocation records, which takes the lock itself.
    Codes* const made = new Codes;
    const std::lock_guard lock(listMutex);
    list = made;
    return made != nullptr;
}

void PendingErrorList::destroy() noexcept {
    const std::lock_guard lock(listMutex);
    delete list;
    list = nullptr;
}

void PendingErrorList::clear() noexcept {
    const std::lock_guard lock(listMutex);
    if (list != nullptr) list->dropThread(std::this_thread::get_id());
}

PF_Err PendingErrorList::takeFirst() noexcept {
    const std::thread::id self = std::this_thread::get_id();
    const std::lock_guard lock(listMutex);
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
    const std::lock_guard lock(listMutex);
    if (list == nullptr || list->count == kRoom) return;
    list->entries[list->count++] = {std::this_thread::get_id(), code};
}

}  // namespace AEUtil
