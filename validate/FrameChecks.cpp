// Frames come out the same on every way and in every order, and stop when they are told to.
#include <algorithm>

#include "validate/Checks.h"
#include "validate/Frames.h"
#include "validate/Random.h"
#include "validate/RandomValues.h"

namespace validate {
namespace {

using namespace standin;

void roadsAgree(const Subject& subject, Report& report) {
    Play play(subject, report);
    Random random(subject.seed);
    for (int round = 0; round < 60; ++round) {
        storeRandomValues(play.instance(), random, Reach::inside);
        for (const Depth depth : {Depth::bits8, Depth::bits16}) {
            report.at(text("seed ", subject.seed, " round ", round, " ", bitDepth(depth), " bits"));
            FrameRequest request = frameOf({depth, Road::smart});
            request.currentTime = random.between(-5, 50);
            request.quality = random.below(2);
            const Image smart = play.picture(request);
            request.road = Road::legacy;
            report.expectNone(difference(play.picture(request), smart));
        }
    }
    play.end();
}

// Nothing of a frame may leak into a later one: forwards, shuffled, and on another instance.
void anyOrder(const Subject& subject, Report& report) {
    constexpr int kFrames = 24;
    Play play(subject, report);
    storeBusyValues(play, Dabs::small);
    Instance other = play.instance().duplicate();
    Random random(subject.seed);
    FrameRequest request = frameOf({Depth::bits8, Road::smart});
    std::vector<Image> pictures;
    for (int frame = 0; frame < kFrames; ++frame) {
        request.currentTime = frame;
        pictures.push_back(play.picture(request));
    }
    for (int i = 0; i < 3 * kFrames; ++i) {
        const int frame = random.below(kFrames);
        report.at(text("frame ", frame, " in disorder"));
        request.currentTime = frame;
        request.discardedPlans = random.below(3);
        request.road = random.oneIn(3) ? Road::legacy : Road::smart;
        if (random.oneIn(4)) play.render(frameOf({Depth::float32, Road::smart}, 20, 20));
        Instance& instance = random.oneIn(2) ? other : play.instance();
        report.expectNone(difference(renderFrame(instance, request).output, pictures[frame]));
    }
    other.setDown();
    play.end();
}

// Reports of progress count up, whatever the host answers to them; the last one is the end.
void progress(const Subject& subject, Report& report) {
    Play play(subject, report);
    storeBusyValues(play, Dabs::large);
    for (const Way& way : kWays) {
        report.at(name(way));
        FrameRequest request = frameOf(way);
        const Image expected = play.picture(request);
        request.onProgress = [](A_long, A_long) { return true; };
        const FrameResult result = play.render(request);
        report.expectSame<PF_Err>(result.code, 0, "the code of a frame whose reports are refused");
        report.expectNone(difference(result.output, expected));
        const auto& reports = result.progress;
        report.expect(!reports.empty() && reports.back() == 100 &&
                          std::is_sorted(reports.begin(), reports.end() - 1),
                      "reports of progress go back or do not reach the end");
    }
    play.end();
}

// The n-th question whether the user cancelled is answered yes, for every n.
void abortKeepsBackground(const Subject& subject, Report& report) {
    Play play(subject, report);
    long aborts = 0;
    for (const Way& way : kWays) {
        for (const bool clear : {true, false}) {
            storeBusyValues(play, Dabs::large);
            play.set("Clear Background", clear);
            const FrameRequest request = frameOf(way);
            const Image whole = play.picture(request);
            for (long n = 1;; ++n) {
                report.at(text(name(way), clear ? ", cleared" : "", ", abort ", n));
                const PF_Err answer = n % 2 ? PF_Interrupt_CANCEL : PF_Err{-7};
                play.host().faults().failAt(CallKind::abort, n, answer);
                const FrameResult result = play.render(request);
                const bool stopped = play.host().faults().failures() > 0;
                play.host().faults().clear();
                if (!stopped) {
                    report.expectNone(difference(result.output, whole));
                    break;
                }
                ++aborts;
                report.expectSame(result.code, answer, "the code");
                report.expectNone(difference(result.output, backgroundOf(play, request)));
                play.expectTidy();
            }
        }
    }
    report.at("");
    report.note(text(aborts, " aborts"));
    play.end();
}

}  // namespace

std::span<const Check> frameChecks() {
    static constexpr Check kChecks[] = {
        {"frames.roads_agree", 3, 30, "Both roads give the same picture", roadsAgree},
        {"frames.any_order", 3, 30, "A frame's picture does not depend on those before it",
         anyOrder},
        {"frames.progress", 3, 20, "Reports of progress count up and change nothing", progress},
        {"frames.abort", 4, 30, "A stopped frame shows its background and gives the host's code",
         abortKeepsBackground},
    };
    return kChecks;
}

}  // namespace validate
