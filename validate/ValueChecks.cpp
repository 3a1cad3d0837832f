// Values that sliders give, and values that only a damaged project or an expression can give.
#include <algorithm>
#include <chrono>
#include <cmath>
#include <limits>

#include "validate/Checks.h"
#include "validate/Frames.h"
#include "validate/RandomValues.h"

namespace validate {
namespace {

using namespace standin;

// What is drawn here counts less than that something comes back, soon.
constexpr double kSecondsOfASmallFrame = 5;
// Far past the ranges a frame may be slow, or too much for the memory; but it can be cancelled.
constexpr double kSecondsToCancel = 30;
constexpr PF_Err kNoMemory = 512;

void expectInTime(const FrameResult& result, double seconds, const Subject& subject,
                  Report& report) {
    report.expect(result.renderSeconds < seconds * subject.patience,
                  text("the frame takes ", result.renderSeconds, " seconds"));
}

void renderInTime(Play& play, FrameRequest request, const Subject& subject, Report& report,
                  double& slowest) {
    const FrameResult result = play.render(request);
    report.expectSame<PF_Err>(result.code, 0, "the code");
    expectInTime(result, kSecondsOfASmallFrame, subject, report);
    play.expectTidy();
    slowest = std::max(slowest, result.renderSeconds);
}

void renderOrCancel(Play& play, FrameRequest request, const Subject& subject, Report& report,
                    double& slowest) {
    using Clock = std::chrono::steady_clock;
    const auto start = Clock::now();
    const std::chrono::duration<double> enough(kSecondsOfASmallFrame * subject.patience);
    bool cancelled = false;
    request.onProgress = [&](A_long, A_long) {
        cancelled = Clock::now() - start > enough;
        if (cancelled) play.host().cancel();
        return cancelled;
    };
    const FrameResult result = play.render(request);
    play.host().clearCancel();
    if (!cancelled) {
        report.expect(result.code == 0 || result.code == kNoMemory,
                      text("the code is ", result.code));
    }
    expectInTime(result, kSecondsToCancel, subject, report);
    play.expectTidy();
    slowest = std::max(slowest, result.renderSeconds);
}

void randomFrames(const Subject& subject, Report& report, int rounds, Reach reach) {
    Play play(subject, report);
    Random random(subject.seed);
    double slowest = 0;
    const auto render = reach == Reach::past ? &renderOrCancel : &renderInTime;
    for (int round = 0; round < rounds; ++round) {
        storeRandomValues(play.instance(), random, reach);
        report.at(text("seed ", subject.seed, " round ", round, " (",
                       describeValues(play.instance(), play.host()), ")"));
        FrameRequest request = frameOf(random.oneOf(std::span<const Way>(kWays)),
                                       random.between(1, 60), random.between(1, 60));
        request.currentTime = random.between(-10, 1000);
        render(play, request, subject, report, slowest);
    }
    report.at("");
    report.note(text(rounds, " frames, the slowest ", slowest * 1000, " ms"));
    play.end();
}

void insideRanges(const Subject& subject, Report& report) {
    randomFrames(subject, report, 300, Reach::inside);
}

void pastRanges(const Subject& subject, Report& report) {
    randomFrames(subject, report, 300, Reach::past);
}

void pastRangesLong(const Subject& subject, Report& report) {
    Subject other = subject;
    other.seed += 0x5EED;
    randomFrames(other, report, 5000, Reach::past);
}

std::vector<double> edgesOf(const ParamInfo& param) {
    const double span = param.validMax - param.validMin;
    std::vector<double> edges = {param.validMin, param.validMax, 0, param.validMax + span,
                                 param.validMin - span};
    if (param.type == PF_Param_SLIDER) {
        edges.insert(edges.end(), {-0x1p31, 0x1p31 - 1});
    } else if (param.type == PF_Param_FLOAT_SLIDER) {
        using Limits = std::numeric_limits<double>;
        edges.insert(edges.end(),
                     {std::nextafter(param.validMin, 1e9), Limits::quiet_NaN(), Limits::infinity(),
                      -Limits::infinity(), Limits::max(), Limits::denorm_min(), -1e9, 1e9});
    }
    return edges;
}

// One parameter at an edge at a time, over the defaults and over a frame where all is on.
void edges(const Subject& subject, Report& report) {
    Play play(subject, report);
    double slowest = 0;
    for (const ParamInfo& param : play.host().params()) {
        if (param.type != PF_Param_SLIDER && param.type != PF_Param_FLOAT_SLIDER) continue;
        for (const double edge : edgesOf(param)) {
            for (const bool busy : {false, true}) {
                if (busy) {
                    storeBusyValues(play, Dabs::small);
                } else {
                    play.instance().storeDefaults();
                }
                play.instance().storeValue(param.id, Value::number(edge));
                report.at(text("\"", param.name, "\" at ", edge, busy ? ", all on" : ""));
                renderInTime(play, frameOf(kWays[0], 40, 30), subject, report, slowest);
            }
        }
    }
    report.at("");
    report.note(text("the slowest ", slowest * 1000, " ms"));
    play.end();
}

}  // namespace

std::span<const Check> valueChecks() {
    static constexpr Check kChecks[] = {
        {"values.inside", 5, 60, "Random values inside the ranges give frames", insideRanges},
        {"values.edges", 5, 60, "Each value at its ends, far past them and as no number", edges},
        {"values.past", 6, 90,
         "Random values, also far past the ranges, give frames or are cancelled", pastRanges},
        {"values.past_long", 10, 900, "The same for thousands of frames", pastRangesLong},
    };
    return kChecks;
}

}  // namespace validate
