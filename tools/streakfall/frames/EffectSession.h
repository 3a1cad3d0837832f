// The effect, loaded and set up on a stand-in host. One a run of the program; everything that
// concerns the effect goes through it. Ends the effect's life when it goes.
#pragma once

#include <memory>
#include <mutex>
#include <string>

#include "ParamArguments.h"
#include "host/Host.h"
#include "host/Instance.h"

namespace tool {

// Absolute path of the effect module: the given one, or when that is empty the one beside the
// program, or the one that was installed with it. Throws Failure (effect) when there is none.
[[nodiscard]] std::string locateModule(const std::string& given);

// What new instances open with: the values that the options dialog stored beside the module, or
// the effect's own whatever is stored there.
enum class Defaults { kStored, kOwn };

class EffectSession {
  public:
    // An empty path means the module beside the program. Throws Failure (effect).
    EffectSession(const std::string& modulePath, Defaults defaults);

    [[nodiscard]] standin::Host& host() { return *host_; }
    [[nodiscard]] ParamArguments readArguments(const ParamTexts& texts) const;

    // A new instance on a layer of this size, at the effect's defaults. Safe from any thread; the
    // frames of several instances may be rendered at once. Throws Failure (effect).
    [[nodiscard]] standin::Instance makeInstance(standin::LayerSize layer);

    // The parameters as the effect announces them now: with its stored defaults as they are, or its
    // own. Not while frames are drawn. Throws Failure (effect).
    [[nodiscard]] std::vector<standin::ParamInfo> announcedNow(Defaults defaults);

    // Where the effect keeps saved defaults: beside the module, under its name; of an installed
    // module, whose folder is not the user's to write to, in the user's own for settings.
    [[nodiscard]] std::string settingsFile() const;
    // The section of that file which holds this version's values.
    [[nodiscard]] std::string settingsSection() const;
    // "1.5.2", as the effect announced it.
    [[nodiscard]] std::string version() const;

  private:
    standin::Module module_;
    std::string toldPath_;  // where the effect is told that its module is
    std::unique_ptr<standin::Host> host_;
    std::mutex making_;
};

// As a host on this module would get them, if it started now.
[[nodiscard]] std::vector<standin::ParamInfo> announcedNow(standin::Module& module,
                                                           const standin::HostOffer& offer);

// Time runs in steps: frame n stands at n * timeStep / timeScale seconds.
struct FrameRate {
    A_u_long timeScale = 24;
    A_long timeStep = 1;
};

// The host's time of a frame. Throws Failure (usage) that names `what` when the host has no such
// time.
[[nodiscard]] A_long timeOf(int frame, const FrameRate& rate, std::string_view what);

// Stores the values in the instance, without telling the effect, as a project does that is
// opened. Throws Failure (usage) for a key past the end of time.
void storeValues(standin::Instance& instance, const ParamArguments& arguments,
                 const FrameRate& rate);

}  // namespace tool
