// Who may draw, and who is to leave off. Each page has slots; of the requests of one slot only the
// newest counts: it stops the one that draws, and those that wait go away. Over all slots so many
// draw at once as there are cores. Safe from any thread.
#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>

namespace tool::panel {

class DrawQueue;

// Owner: a page; used by the queue alone.
class DrawSlot {
  private:
    friend class DrawQueue;
    friend class DrawTurn;
    std::atomic<std::uint64_t> newest_{0};  // tickets; changed under the queue's mutex
    double lastTurn_ = -1;
    bool busy_ = false;
};

// The right to draw in a slot, for as long as it lives.
class DrawTurn {
  public:
    DrawTurn(DrawQueue& queue, DrawSlot& slot, std::uint64_t ticket)
        : queue_(queue), slot_(slot), ticket_(ticket) {}
    ~DrawTurn();
    DrawTurn(const DrawTurn&) = delete;
    DrawTurn& operator=(const DrawTurn&) = delete;

    // A newer request came, the page is gone, or the program ends.
    [[nodiscard]] bool isOver() const;

  private:
    DrawQueue& queue_;
    DrawSlot& slot_;
    std::uint64_t ticket_;
};

// Nobody draws while it lives: for commands of the effect that change what all draws read.
class DrawPause {
  public:
    explicit DrawPause(DrawQueue& queue);
    ~DrawPause();
    DrawPause(const DrawPause&) = delete;
    DrawPause& operator=(const DrawPause&) = delete;

  private:
    DrawQueue& queue_;
};

class DrawQueue {
  public:
    DrawQueue();

    // Waits for the slot. Nothing when a newer request came meanwhile, or before: `turn` is the
    // requester's own count, since requests may overtake each other on their way.
    [[nodiscard]] std::unique_ptr<DrawTurn> enter(DrawSlot& slot, std::optional<double> turn);
    // All who draw or wait there leave off.
    void leave(DrawSlot& slot);
    // Everybody leaves off, from now on.
    void end();
    [[nodiscard]] bool hasEnded() const { return ended_; }

  private:
    friend class DrawTurn;
    friend class DrawPause;

    std::mutex mutex_;
    std::condition_variable changed_;
    std::atomic<bool> ended_{false};
    int drawing_ = 0;
    int pauses_ = 0;
    int most_;  // at once
};

}  // namespace tool::panel
