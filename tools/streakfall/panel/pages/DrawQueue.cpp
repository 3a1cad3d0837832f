#include "DrawQueue.h"

#include <algorithm>
#include <thread>

namespace tool::panel {

DrawTurn::~DrawTurn() {
    const std::lock_guard lock(queue_.mutex_);
    slot_.busy_ = false;
    --queue_.drawing_;
    queue_.changed_.notify_all();
}

bool DrawTurn::isOver() const { return queue_.ended_ || slot_.newest_ != ticket_; }

DrawPause::DrawPause(DrawQueue& queue) : queue_(queue) {
    std::unique_lock lock(queue_.mutex_);
    ++queue_.pauses_;
    queue_.changed_.wait(lock, [&] { return queue_.drawing_ == 0; });
}

DrawPause::~DrawPause() {
    const std::lock_guard lock(queue_.mutex_);
    --queue_.pauses_;
    queue_.changed_.notify_all();
}

DrawQueue::DrawQueue()
    : most_(std::max(2, static_cast<int>(std::thread::hardware_concurrency()))) {}

std::unique_ptr<DrawTurn> DrawQueue::enter(DrawSlot& slot, std::optional<double> turn) {
    std::unique_lock lock(mutex_);
    if (turn && *turn < slot.lastTurn_) return nullptr;
    if (turn) slot.lastTurn_ = *turn;
    const std::uint64_t ticket = ++slot.newest_;
    changed_.notify_all();
    const auto isOver = [&] { return ended_ || slot.newest_ != ticket; };
    changed_.wait(lock,
                  [&] { return isOver() || (!slot.busy_ && drawing_ < most_ && pauses_ == 0); });
    if (isOver()) return nullptr;
    slot.busy_ = true;
    ++drawing_;
    return std::make_unique<DrawTurn>(*this, slot, ticket);
}

void DrawQueue::leave(DrawSlot& slot) {
    const std::lock_guard lock(mutex_);
    ++slot.newest_;
    changed_.notify_all();
}

void DrawQueue::end() {
    const std::lock_guard lock(mutex_);
    ended_ = true;
    changed_.notify_all();
}

}  // namespace tool::panel
