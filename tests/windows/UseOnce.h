// One use of a loaded module, from its start to its end.
#pragma once

#include <gtest/gtest.h>

#include "effect/PlayedEffect.h"

namespace windows_test {

inline const golden::Frame& tinyFrame() { return golden::frame("24"); }

// Starts the module, renders a small frame, and stops it; the books must be clean.
inline void useOnce(PF_EntryPoint entry) {
    using namespace standin;
    Module module(entry);
    Host host(module);
    ASSERT_EQ(host.start(), 0);
    {
        Instance instance(host, {320, 180});
        for (const auto& named : tinyFrame().named) {
            instance.storeValue(named.first, played::valueOf(tinyFrame(), named.first));
        }
        EXPECT_EQ(renderFrame(instance, played::requestFor(tinyFrame(), Depth::bits8)).code, 0);
    }
    EXPECT_EQ(host.stop(), 0);
    EXPECT_EQ(host.ledger().unbalanced(), "");
    EXPECT_EQ(host.ledger().violationText(), "");
}

}  // namespace windows_test
