// The module, loaded from its file and played by a stand-in host. At the end of every test the
// effect is taken down and the host's books must be clean.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>

#include "host/FrameRender.h"
#include "host/Host.h"
#include "host/Instance.h"
#include "support/GoldenFrame.h"

namespace played {

inline constexpr standin::Depth kDepths[] = {standin::Depth::bits8, standin::Depth::bits16,
                                             standin::Depth::float32};

// The file of the module; a program may name another one before the first use.
std::string& modulePath();

// The one module of this process.
standin::Module& module();

class EffectTest : public ::testing::Test {
  protected:
    // A started host with an instance on it, in place of the one before.
    standin::Host& play(const standin::HostOffer& offer = {},
                        const standin::LayerSize& layer = {320, 180});
    // Sets the instance down and stops the host; the books must be clean.
    void endPlay();
    void TearDown() override { endPlay(); }

    standin::Host& host() { return *host_; }
    standin::Instance& instance() { return *instance_; }

    void set(const char* name, double value);
    void set(const char* name, const standin::Value& value);
    // All parameters as the golden frame has them.
    void setAll(const golden::Frame& frame);

    standin::FrameResult render(const standin::FrameRequest& request);

    std::unique_ptr<standin::Host> host_;
    std::optional<standin::Instance> instance_;
};

// The value of a parameter that the golden frame names, as a host hands it out.
standin::Value valueOf(const golden::Frame& frame, std::int32_t paramId);

// A request for a golden frame on an opaque input.
standin::FrameRequest requestFor(const golden::Frame& frame, standin::Depth depth,
                                 standin::Road road = standin::Road::smart);

// A small request on an opaque grey input with a transparent left half.
standin::FrameRequest halfMatted(int width, int height, standin::Depth depth,
                                 standin::Road road = standin::Road::smart);

}  // namespace played
