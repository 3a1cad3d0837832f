// What the host gets when something of its own fails, and that nothing is left behind.
#include <algorithm>

#include "PlayedEffect.h"
#include "support/SameImage.h"

namespace {

using namespace played;
using namespace standin;

constexpr LayerSize kSmall{64, 48};

class FailuresTest : public EffectTest {
  protected:
    FrameRequest small(Road road = Road::smart) {
        return halfMatted(kSmall.width, kSmall.height, Depth::bits8, road);
    }

    // The code of a render on a host without something.
    PF_Err renderOn(const HostOffer& offer, Road road = Road::smart) {
        play(offer, kSmall);
        return render(small(road)).code;
    }
    // The codes of a render whose n-th call of the kind fails.
    FrameResult renderFailing(CallKind kind, long n, PF_Err code, Road road = Road::smart) {
        play({}, kSmall);
        // The suites that are kept are there already.
        EXPECT_EQ(render(small(road)).code, 0);
        host().faults().failAt(kind, n, code);
        const FrameResult result = render(small(road));
        EXPECT_EQ(host().faults().failures(), 1);
        return result;
    }
};

TEST_F(FailuresTest, CodesOfTheHostComeBackAsTheyAre) {
    for (const CallKind kind :
         {CallKind::fill, CallKind::transfer, CallKind::newWorld, CallKind::getPixelFormat,
          CallKind::checkoutLayerPixels, CallKind::checkoutOutput, CallKind::checkinLayerPixels}) {
        EXPECT_EQ(renderFailing(kind, 1, 77).code, 77) << name(kind);
    }
    for (const CallKind kind :
         {CallKind::checkoutParam, CallKind::checkinParam, CallKind::checkoutLayer}) {
        const FrameResult result = renderFailing(kind, 1, 77);
        EXPECT_EQ(result.planCode, 77) << name(kind);
        EXPECT_FALSE(result.rendered);
    }
    for (const CallKind kind :
         {CallKind::fill, CallKind::transfer, CallKind::newWorld, CallKind::getPixelFormat,
          CallKind::checkoutParam, CallKind::checkinParam}) {
        EXPECT_EQ(renderFailing(kind, 1, 77, Road::legacy).code, 77) << name(kind);
    }
    play({}, kSmall);
    set("Clear Background", 0);
    host().faults().failAt(CallKind::copy, 1, 77);
    EXPECT_EQ(render(small()).code, 77);
}

TEST_F(FailuresTest, FailedBackgroundEndsTheRenderAfterItsReport) {
    const FrameResult result = renderFailing(CallKind::fill, 1, 77);
    EXPECT_EQ(result.progress, std::vector<A_long>{10});
    EXPECT_EQ(std::ranges::count(result.calls, CallKind::newWorld), 0);
}

// A parameter that is refused half way: those before it are checked in, the render never starts.
TEST_F(FailuresTest, RefusedParameterStopsTheRender) {
    const FrameResult result = renderFailing(CallKind::checkoutParam, 20, 77, Road::legacy);
    EXPECT_EQ(result.code, 77);
    EXPECT_TRUE(result.progress.empty());
    EXPECT_EQ(std::ranges::count(result.calls, CallKind::checkinParam), 19);
}

// The code of a check-in counts only when nothing failed before.
TEST_F(FailuresTest, EarlierFailureCoversTheCheckIn) {
    play({}, kSmall);
    host().faults().failAt(CallKind::checkinParam, 1, 78);
    host().faults().failAt(CallKind::transfer, 1, 77);
    EXPECT_EQ(render(small(Road::legacy)).code, 77);
}

// A world that cannot be made ends the render where it stands: no further report.
TEST_F(FailuresTest, ExceptionsOfTheFlowStopTheProgress) {
    EXPECT_EQ(renderFailing(CallKind::newWorld, 1, 77).progress, (std::vector<A_long>{10, 20}));
}

TEST_F(FailuresTest, MissingSuitesAre512) {
    HostOffer offer;
    offer.fillMatteSuite = false;
    EXPECT_EQ(renderOn(offer), 512);
    EXPECT_EQ(renderOn(offer, Road::legacy), 512);
    offer = {};
    offer.worldTransformSuite = false;
    EXPECT_EQ(renderOn(offer), 512) << "at the composite";
    offer = {};
    offer.worldSuite1 = offer.worldSuite2 = false;
    EXPECT_EQ(renderOn(offer), 512) << "at the line buffer";
}

TEST_F(FailuresTest, NoMemoryIs512) {
    for (const CallKind kind : {CallKind::newHandle, CallKind::lockHandle}) {
        play({}, kSmall);
        host().faults().failAt(kind, 1);
        EXPECT_EQ(render(small()).planCode, 512) << name(kind);
        // The next frame is not answered for what the last one recorded.
        EXPECT_EQ(render(small()).code, 0);
        host().faults().failAt(kind, 1);
        EXPECT_EQ(render(small(Road::legacy)).code, 512) << name(kind);
    }
}

// A start that fails leaves nothing: the next command starts anew.
TEST_F(FailuresTest, FailedStartIsTriedAgain) {
    for (long n = 1;; ++n) {
        SCOPED_TRACE(n);
        host_ = std::make_unique<Host>(module());
        host().faults().failAt(CallKind::newHandle, n);
        const PF_Err code = host().send(PF_Cmd_GLOBAL_SETUP);
        const bool failed = host().faults().failures() > 0;
        EXPECT_EQ(code, failed ? 512 : 0);
        if (failed) {
            EXPECT_EQ(host().ledger().unbalanced(), "");
            EXPECT_EQ(host().send(PF_Cmd_GLOBAL_SETUP), 0);
        }
        EXPECT_EQ(host().send(PF_Cmd_GLOBAL_SETDOWN), 0);
        endPlay();
        if (!failed) {
            EXPECT_GT(n, 60) << "the parameter objects alone are more allocations";
            break;
        }
    }
}

TEST_F(FailuresTest, StartWithoutServices) {
    HostOffer offer;
    offer.basicSuite = false;
    host_ = std::make_unique<Host>(module(), offer);
    EXPECT_EQ(host().send(PF_Cmd_GLOBAL_SETUP), 4) << "every allocation gives null";
    EXPECT_EQ(host().send(PF_Cmd_GLOBAL_SETDOWN), 4);
    endPlay();
    offer = {};
    offer.handleSuite = false;
    host_ = std::make_unique<Host>(module(), offer);
    EXPECT_EQ(host().send(PF_Cmd_FRAME_SETUP), 512);
}

// The n-th call of every kind fails, for each n there is, over a whole life of the effect. Which
// code comes is for the cases above; here nothing may crash, leave or be left.
class LongFailuresTest : public FailuresTest {
  protected:
    void liveALife() {
        if (host().start() != 0) return;
        try {
            instance_.emplace(host(), kSmall);
        } catch (const EffectError&) {
            return;
        }
        for (const Road road : {Road::smart, Road::legacy}) render(small(road));
        static_cast<void>(instance().setDown());
        instance_.reset();
    }
};

TEST_F(LongFailuresTest, SweepOverEveryCallOfTheHost) {
    play({}, kSmall);
    const Image expected = render(small()).output;
    endPlay();
    for (int kind = 0; kind < kCallKinds; ++kind) {
        for (long n = 1;; ++n) {
            SCOPED_TRACE(std::string(name(static_cast<CallKind>(kind))) + " " + std::to_string(n));
            host_ = std::make_unique<Host>(module());
            host().faults().failAt(static_cast<CallKind>(kind), n);
            liveALife();
            const bool failed = host().faults().failures() > 0;
            host().faults().clear();
            endPlay();
            if (!failed || HasFailure()) break;
        }
    }
    play({}, kSmall);
    expectSameImage(render(small()).output, expected);
}

}  // namespace
