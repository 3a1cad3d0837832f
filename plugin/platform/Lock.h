// A lock and the number of a thread, from the system itself.
//
// The standard library's own come with a thread runtime, which on Windows leaves a handler in the
// process that loads the module. A host's process is not the module's to change.
#pragma once

#include <cstdint>
#include <mutex>

namespace streakfall::platform {

// For std::lock_guard. Not recursive; needs no making and no end, so it may be a static that a
// module is unloaded with.
class Lock {
  public:
    constexpr Lock() = default;
    Lock(const Lock&) = delete;
    Lock& operator=(const Lock&) = delete;
    void lock();
    void unlock();

  private:
#ifdef _WIN32
    void* word_ = nullptr;  // the system's slim lock, free while null
#else
    std::mutex mutex_;
#endif
};

// Of the calling thread; no two that run at once share it.
std::uintptr_t threadNumber();

}  // namespace streakfall::platform
