// What all pages of a panel share: the effect, the layer with its pictures, the looks, and the
// order in which frames are drawn. Made from the options of the command line, and nothing that a
// request says reaches beyond what they name. Safe from any thread, but for `session`, which takes
// commands under `commands`.
#pragma once

#include <array>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "Backdrops.h"
#include "DrawQueue.h"
#include "EffectSession.h"
#include "Look.h"
#include "Values.h"

namespace tool::panel {

struct StudioOptions {
    std::string module;      // file; empty: beside the program
    std::string input;       // pattern; empty: opaque black of `size`
    std::string imageLayer;  // of an EXR
    std::string size = "1920x1080";
    std::string look;  // key or file; empty: none
};

// The input as it was found at the start.
struct InputInfo {
    FilePattern pattern;
    int count;  // of files
};

class Studio {
  public:
    // Throws Failure: usage, input, or effect.
    explicit Studio(const StudioOptions& options);

    [[nodiscard]] EffectSession& session() { return session_; }
    // Held around every command of the effect but those that draw: a host sends them one at a time.
    [[nodiscard]] std::mutex& commands() { return commands_; }
    [[nodiscard]] Backdrops& backdrops() { return *backdrops_; }
    [[nodiscard]] DrawQueue& queue() { return queue_; }
    [[nodiscard]] bool hasEnded() const { return queue_.hasEnded(); }

    [[nodiscard]] const StudioOptions& options() const { return options_; }
    [[nodiscard]] const std::optional<InputInfo>& input() const { return input_; }
    [[nodiscard]] standin::LayerSize layer() const { return layer_; }
    [[nodiscard]] const FrameRate& rate() const { return rate_; }
    [[nodiscard]] std::array<int, 2> frames() const { return frames_; }

    // With the defaults that were stored at the start; what is stored meanwhile holds from the next
    // start on, as in any host.
    [[nodiscard]] const Params& params() { return session_.host().params(); }
    // With the effect's own defaults, whatever is stored.
    [[nodiscard]] const Params& ownParams() const { return ownParams_; }

    // The look of the options first, when it is a file, then those that ship.
    [[nodiscard]] const std::vector<Look>& looks() const { return looks_; }
    // Null when there is none of this key.
    [[nodiscard]] const Look* findLook(const std::string& key) const;
    [[nodiscard]] const Look* openingLook() const;

    // What a new page opens with.
    [[nodiscard]] Values openingValues();
    // A look over the effect's own defaults, fitted to the layer. Throws Failure (usage).
    [[nodiscard]] Values valuesOf(const Look& look);
    // A state as a page sent it, over the stored defaults. Throws Refusal, Failure.
    [[nodiscard]] Values valuesOf(const Json& state);

  private:
    void findInput();
    void findLooks();

    StudioOptions options_;
    EffectSession session_;
    std::mutex commands_;
    Params ownParams_;
    std::optional<InputInfo> input_;
    standin::LayerSize layer_{0, 0};
    FrameRate rate_;
    std::array<int, 2> frames_{0, 99};
    std::vector<Look> looks_;
    std::unique_ptr<Backdrops> backdrops_;
    DrawQueue queue_;
};

}  // namespace tool::panel
