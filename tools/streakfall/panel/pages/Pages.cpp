#include "Pages.h"

#include <algorithm>
#include <vector>

#include "Guard.h"

namespace tool::panel {

// Pages end outside the lock: their last word to the effect waits for other commands.

std::string Pages::add(std::shared_ptr<Page> page) {
    const std::string name = randomName();
    Open dropped;
    const std::lock_guard lock(mutex_);
    if (open_.size() >= kMost) {
        const auto silent =
            std::min_element(open_.begin(), open_.end(), [](const auto& one, const auto& other) {
                return one.second.heard < other.second.heard;
            });
        dropped = std::move(silent->second);
        dropped.page->close();
        open_.erase(silent);
    }
    open_.emplace(name, Open{std::move(page), Clock::now()});
    return name;
}

std::shared_ptr<Page> Pages::find(const std::string& name) {
    const std::lock_guard lock(mutex_);
    const auto found = open_.find(name);
    if (found == open_.end())
        throw Refusal(Status::kMissing, "this page was dropped; open it again", {{"gone", true}});
    found->second.heard = Clock::now();
    return found->second.page;
}

void Pages::remove(const std::string& name) {
    Open removed;
    const std::lock_guard lock(mutex_);
    const auto found = open_.find(name);
    if (found == open_.end()) return;
    removed = std::move(found->second);
    removed.page->close();
    open_.erase(found);
}

void Pages::dropSilent(Clock::time_point now) {
    std::vector<Open> dropped;
    const std::lock_guard lock(mutex_);
    for (auto at = open_.begin(); at != open_.end();) {
        if (now - at->second.heard < kLongestSilence) {
            ++at;
            continue;
        }
        dropped.push_back(std::move(at->second));
        dropped.back().page->close();
        at = open_.erase(at);
    }
}

std::size_t Pages::count() const {
    const std::lock_guard lock(mutex_);
    return open_.size();
}

}  // namespace tool::panel
