// How a frame is planned and asked for, on both roads and on older hosts.
#include <algorithm>

#include "PlayedEffect.h"
#include "effect/CustomFilter.h"
#include "effect/RenderPlanning.h"
#include "support/SameImage.h"

namespace {

using namespace played;
using namespace standin;

bool same(const PF_LRect& a, const PF_LRect& b) {
    return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}

TEST(UnionRectTest, EmptyRectanglesAddNothing) {
    const auto united = [](PF_LRect source, PF_LRect destination) {
        streakfall::UnionRect(source, destination);
        return destination;
    };
    const PF_LRect a{0, 5, 10, 20}, b{-3, 8, 4, 40}, emptyX{7, 0, 7, 9}, emptyY{1, 4, 3, 2};
    EXPECT_TRUE(same(united(a, b), {-3, 5, 10, 40}));
    EXPECT_TRUE(same(united(emptyX, a), a));
    EXPECT_TRUE(same(united(a, emptyY), a));
    EXPECT_TRUE(same(united(emptyX, emptyY), emptyX)) << "a copy, with the source's coordinates";
}

TEST(RenderFrameTest, UnknownFormatAndBareBase) {
    streakfall::CustomFilter filter;
    EXPECT_EQ(filter.RenderFrame({}), 514);
    streakfall::BaseFilter base;
    EXPECT_EQ(base.RenderFrame({}), 512);
    EXPECT_EQ(base.QueryDynamicFlags(nullptr, nullptr, nullptr, nullptr), 0);
}

class RenderRoadsTest : public EffectTest {};

TEST_F(RenderRoadsTest, LayerIsAskedForAsTheHostAsked) {
    play({}, {64, 48});
    FrameRequest request = halfMatted(64, 48, Depth::bits8);
    for (const PF_LRect rect : {PF_LRect{0, 0, 64, 48}, PF_LRect{10, 4, 30, 40}}) {
        request.rect = rect;
        const FrameResult result = render(request);
        EXPECT_EQ(result.code, 0);
        ASSERT_TRUE(result.layerRequest.has_value());
        EXPECT_TRUE(same(result.layerRequest->rect, rect));
        EXPECT_TRUE(same(result.resultRect, rect));
        EXPECT_TRUE(same(result.maxResultRect, {0, 0, 64, 48}));
    }
    request.rect = PF_LRect{5, 5, 5, 5};
    EXPECT_EQ(render(request).planCode, 0);
}

// A plan may never be rendered: its data goes back through the deleter, and its parameters are
// checked in. The books at the end of the test tell.
TEST_F(RenderRoadsTest, PlansCanBeThrownAway) {
    play({}, {64, 48});
    FrameRequest request = halfMatted(64, 48, Depth::bits8);
    request.discardedPlans = 3;
    EXPECT_EQ(render(request).code, 0);
    request.planOnly = true;
    EXPECT_EQ(render(request).planCode, 0);
    EXPECT_EQ(host().ledger().live(Loan::param), 0);
    EXPECT_EQ(host().ledger().live(Loan::preRenderData), 0);
}

TEST_F(RenderRoadsTest, MissingWorldsDrawNothing) {
    play({}, {64, 48});
    FrameRequest request = halfMatted(64, 48, Depth::bits8);
    request.withholdInput = true;
    FrameResult result = render(request);
    EXPECT_EQ(result.code, 0);
    EXPECT_TRUE(result.progress.empty());
    EXPECT_EQ(std::ranges::count(result.calls, CallKind::checkinLayerPixels), 1);

    request.withholdInput = false;
    request.withholdOutput = true;
    result = render(request);
    EXPECT_EQ(result.code, 0);
    EXPECT_TRUE(result.progress.empty());

    request.withholdOutput = false;
    request.withholdPlanData = true;
    EXPECT_EQ(render(request).code, 512);
}

TEST_F(RenderRoadsTest, PremiereGetsTheInput) {
    HostOffer offer;
    offer.applId = kAppID_PrMr;
    play(offer, {64, 48});
    const FrameRequest request = halfMatted(64, 48, Depth::bits8, Road::legacy);
    const FrameResult result = render(request);
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(std::ranges::count(result.calls, CallKind::checkoutParam), 0);
    EXPECT_TRUE(result.progress.empty());
    expectSameImage(result.output, request.input);
}

// A host without the newer world suite tells the depth by a flag and makes worlds by flags.
TEST_F(RenderRoadsTest, OlderHostGetsTheSamePicture) {
    for (const Depth depth : {Depth::bits8, Depth::bits16}) {
        for (const Road road : {Road::smart, Road::legacy}) {
            std::vector<Image> outputs;
            for (const HostOffer& offer : {HostOffer::old(), HostOffer{}}) {
                play(offer);
                setAll(golden::frame("07"));
                const FrameResult result = render(halfMatted(320, 180, depth, road));
                EXPECT_EQ(result.code, 0);
                outputs.push_back(result.output);
            }
            expectSameImage(outputs[0], outputs[1]);
        }
    }
}

TEST_F(RenderRoadsTest, TimeMattersOnlyWhenSomethingMoves) {
    play({}, {64, 48});
    const auto wide = [&] {
        return (instance().queryDynamicFlags() & PF_OutFlag_WIDE_TIME_INPUT) != 0;
    };
    EXPECT_FALSE(wide());
    set("Auto Offset", 0.5);
    EXPECT_TRUE(wide());
    set("Auto Offset", 0);
    EXPECT_FALSE(wide());
    set("Random Interval", 1);
    EXPECT_TRUE(wide());
    EXPECT_EQ(host().ledger().live(Loan::param), 0);
}

}  // namespace
