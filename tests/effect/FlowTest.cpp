// The flow of one frame, as the host sees it.
#include <algorithm>

#include "PlayedEffect.h"
#include "support/SameImage.h"

namespace {

using namespace played;
using namespace standin;

class FlowTest : public EffectTest {
  protected:
    // Nine lines, all over the frame.
    FrameRequest nineLines(Depth depth = Depth::bits8, Road road = Road::smart) {
        play();
        setAll(golden::frame("03"));
        FrameRequest request = halfMatted(320, 180, depth, road);
        return request;
    }
    static long count(const FrameResult& result, CallKind kind) {
        return std::ranges::count(result.calls, kind);
    }
    // What the background step alone leaves.
    static Image background(const FrameRequest& request, bool clear) {
        const Image& input = request.input;
        return clear ? Image(input.width(), input.height(), input.depth()) : input;
    }
};

TEST_F(FlowTest, NineLinesReportEachLine) {
    const FrameResult result = render(nineLines());
    EXPECT_EQ(result.code, 0);
    const std::vector<A_long> expected{10, 20, 20, 28, 36, 44, 52, 60, 68, 76, 84, 100};
    EXPECT_EQ(result.progress, expected);
    EXPECT_EQ(count(result, CallKind::abort), 9);
    EXPECT_EQ(count(result, CallKind::transfer), 1);
}

TEST_F(FlowTest, ThousandLinesReportEachTenthPart) {
    // A line a pixel, and 18 beyond each edge that a thick or waving one could reach in from.
    play({}, {40, 963});
    set("Density of Lines", 1000);
    set("Thickness", 3);
    set("Start Point", Value::point(0, 481));
    set("End Point", Value::point(40, 481));
    FrameRequest request;
    request.input = Image::opaqueBlack(40, 963, Depth::bits8);
    const FrameResult result = render(request);
    const std::vector<A_long> expected{10, 20, 20, 28, 36, 44, 52, 60, 68, 76, 84, 92, 100};
    EXPECT_EQ(result.progress, expected);
    EXPECT_EQ(count(result, CallKind::abort), 10);
}

TEST_F(FlowTest, WithoutLinesTheBackgroundStands) {
    for (const char* const without : {"Density of Lines", "Length"}) {
        for (const bool clear : {true, false}) {
            const FrameRequest request = nineLines();
            set(without, 0);
            set("Clear Background", clear);
            const FrameResult result = render(request);
            EXPECT_EQ(result.code, 0);
            EXPECT_EQ(result.progress, (std::vector<A_long>{10, 20}));
            EXPECT_EQ(count(result, CallKind::newWorld), 0);
            expectSameImage(result.output, background(request, clear));
        }
    }
}

TEST_F(FlowTest, AbortKeepsTheBackground) {
    for (const long stopAt : {1L, 4L, 9L}) {
        for (const bool clear : {true, false}) {
            const FrameRequest request = nineLines();
            set("Clear Background", clear);
            host().faults().failAt(CallKind::abort, stopAt, PF_Interrupt_CANCEL);
            const FrameResult result = render(request);
            EXPECT_EQ(result.code, PF_Interrupt_CANCEL);
            EXPECT_EQ(count(result, CallKind::abort), stopAt);
            EXPECT_EQ(count(result, CallKind::transfer), 0);
            EXPECT_EQ(result.progress.back(), 100);
            expectSameImage(result.output, background(request, clear));
        }
    }
}

// Progress is a report only: what the host answers does not end the render.
TEST_F(FlowTest, AnswerOfProgressIsDropped) {
    FrameRequest request = nineLines();
    const Image expected = render(request).output;
    host().faults().failFrom(CallKind::progress, 1, PF_Interrupt_CANCEL);
    const FrameResult result = render(request);
    EXPECT_EQ(result.code, 0);
    expectSameImage(result.output, expected);
}

TEST_F(FlowTest, LinesShowOnlyWhereTheInputDoes) {
    for (const Depth depth : kDepths) {
        for (const bool clear : {true, false}) {
            const FrameRequest request = nineLines(depth);
            set("Clear Background", clear);
            const Image output = render(request).output;
            const Image bare = background(request, clear);
            long changed = 0;
            for (int y = 0; y < output.height(); ++y) {
                for (int x = 0; x < output.width(); ++x) {
                    if (output.get(x, y) == bare.get(x, y)) continue;
                    ASSERT_GE(x, output.width() / 2) << "a line outside the matte";
                    ++changed;
                }
            }
            EXPECT_GT(changed, 1000);
        }
    }
}

TEST_F(FlowTest, OpacityZeroStillComposites) {
    FrameRequest request = nineLines();
    set("Opacity", 0);
    set("Clear Background", 0);
    const FrameResult result = render(request);
    EXPECT_EQ(count(result, CallKind::transfer), 1);
    expectSameImage(result.output, request.input);
}

TEST_F(FlowTest, BothRoadsGiveOnePicture) {
    for (const Depth depth : {Depth::bits8, Depth::bits16}) {
        for (const char* const name : {"06", "09", "13", "17"}) {
            play();
            setAll(golden::frame(name));
            set("Clear Background", 0);
            const FrameResult smart = render(halfMatted(320, 180, depth, Road::smart));
            const FrameResult legacy = render(halfMatted(320, 180, depth, Road::legacy));
            EXPECT_EQ(smart.code, 0);
            EXPECT_EQ(legacy.code, 0);
            expectSameImage(legacy.output, smart.output);
        }
    }
}

TEST_F(FlowTest, FramesInAnyOrderAreTheSameFrames) {
    const auto renderAll = [&](const std::vector<A_long>& times) {
        FrameRequest request = nineLines();
        set("Random Interval", 2);
        set("Auto Offset", 7.5);
        std::map<A_long, Image> images;
        for (const A_long time : times) {
            request.currentTime = time;
            images[time] = render(request).output;
        }
        return images;
    };
    const auto forward = renderAll({-3, 0, 1, 2, 3, 9});
    const auto shuffled = renderAll({9, 2, -3, 3, 1, 0});
    for (const auto& [time, image] : forward) expectSameImage(shuffled.at(time), image);
    EXPECT_NE(forward.at(0), forward.at(1)) << "the offset moves";
    EXPECT_NE(forward.at(1), forward.at(9));
}

TEST_F(FlowTest, PictureDoesNotDependOnHowWorldsLie) {
    const auto outputOn = [&](const HostOffer& offer, Depth depth) {
        play(offer);
        setAll(golden::frame("07"));
        return render(halfMatted(320, 180, depth)).output;
    };
    HostOffer odd;
    odd.rowPadding = 52;
    odd.shiftPixels = true;
    odd.moveUnlockedHandles = true;
    for (const Depth depth : kDepths) expectSameImage(outputOn(odd, depth), outputOn({}, depth));
}

// The host's memory is asked for before the lines are drawn, and once more for the first dab that
// needs a table; from then on no line costs an allocation.
TEST_F(FlowTest, LineLoopAllocatesNothing) {
    for (const char* const name : {"23", "17", "09"}) {
        const golden::Frame& frame = golden::frame(name);
        play();
        setAll(frame);
        set("Thickness Random", 0);
        FrameRequest request = requestFor(frame, Depth::bits8);
        std::vector<long> handles;
        request.onProgress = [&](A_long, A_long) {
            handles.push_back(host().faults().calls(CallKind::newHandle));
            return false;
        };
        ASSERT_EQ(render(request).code, 0);
        ASSERT_GT(handles.size(), 4u);
        // Reports: background, lines made, first line, ...
        for (std::size_t i = 3; i < handles.size(); ++i) EXPECT_EQ(handles[i], handles[2]) << name;
    }
}

}  // namespace
