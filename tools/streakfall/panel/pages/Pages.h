// The pages that are open, by name. One that was silent for long is dropped, and the longest silent
// goes when there are too many; it opens itself again when its browser comes back. Safe from any
// thread.
#pragma once

#include <chrono>
#include <map>
#include <memory>
#include <mutex>
#include <string>

#include "Page.h"

namespace tool::panel {

class Pages {
  public:
    using Clock = std::chrono::steady_clock;

    static constexpr std::size_t kMost = 64;
    static constexpr std::chrono::minutes kLongestSilence{10};

    // Returns its name.
    std::string add(std::shared_ptr<Page> page);
    // Also counts as heard of. Throws Refusal, which tells that the page is gone.
    [[nodiscard]] std::shared_ptr<Page> find(const std::string& name);
    void remove(const std::string& name);
    // Drops those not heard of since long before this time.
    void dropSilent(Clock::time_point now);

    [[nodiscard]] std::size_t count() const;

  private:
    struct Open {
        std::shared_ptr<Page> page;
        Clock::time_point heard;
    };
    mutable std::mutex mutex_;
    std::map<std::string, Open> open_;
};

}  // namespace tool::panel
