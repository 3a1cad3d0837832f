#pragma once

#include <memory>
#include <optional>

#include "host/FrameRender.h"
#include "host/Host.h"
#include "host/Instance.h"
#include "validate/Check.h"
#include "validate/Report.h"

namespace validate {

inline constexpr standin::LayerSize kSmallLayer{64, 48};

// The module of this process; loaded at the first call. A module that cannot be loaded ends the
// check.
standin::Module& moduleOf(const Subject& subject, Report& report);

// The subject on a host of its own, with one instance. Owner: the check.
class Play {
  public:
    // Starts the host and makes the instance; failure ends the check.
    Play(const Subject& subject, Report& report, const standin::HostOffer& offer = {},
         standin::LayerSize layer = kSmallLayer);
    // Stops what end() has not, without a word.
    ~Play();
    Play(const Play&) = delete;
    Play& operator=(const Play&) = delete;

    standin::Host& host() { return *host_; }
    standin::Instance& instance() { return *instance_; }

    // Puts a fresh instance in place of the one there is.
    void renewInstance();
    // The host starts again, after setdown and with a fresh instance. Books must be clean between.
    void restart();

    // Values by name. An effect without the parameter is left as it is.
    void set(const char* name, double value);

    standin::FrameResult render(const standin::FrameRequest& request) {
        return standin::renderFrame(*instance_, request);
    }
    // The picture of a frame that must come out well; anything else is a finding.
    standin::Image picture(const standin::FrameRequest& request);

    // Broken rules so far become findings, and what a command lent must be back: parameters,
    // layers, worlds, plans.
    void expectTidy();
    // Sets down and stops; the books must be empty.
    void end();

  private:
    void start();

    Report& report_;
    std::unique_ptr<standin::Host> host_;
    standin::LayerSize layer_;
    std::optional<standin::Instance> instance_;
};

// Broken rules of a host become findings, and are cleared.
void reportViolations(standin::Host& host, Report& report);

}  // namespace validate
