// Commands in any order: as a host may send them, and as no host should.
#include <optional>

#include "validate/Checks.h"
#include "validate/Frames.h"
#include "validate/OwnFolder.h"
#include "validate/RandomValues.h"
#include "validate/RawCommand.h"

namespace validate {
namespace {

using namespace standin;

// A life on which random steps are taken. At every mark a known frame must come out as at first.
class Walk {
  public:
    Walk(const Subject& subject, Report& report)
        : subject_(subject),
          report_(report),
          folder_(report),
          play_(subject, report, folder_.offer()),
          random_(subject.seed),
          first_(mark()) {}

    void run(int steps, void (Walk::*step)()) {
        for (int i = 0; i < steps; ++i) {
            place_ = text("seed ", subject_.seed, " step ", i);
            (this->*step)();
            play_.expectTidy();
            if (i % 50 == 49) {
                stepsTo("mark");
                report_.expectNone(difference(mark(), first_));
            }
        }
        report_.at("");
        report_.note(text(steps, " steps"));
        copy_.reset();
        play_.end();
    }

    // As a host may go on from anywhere.
    void grammarStep() {
        Instance& instance = play_.instance();
        switch (random_.below(12)) {
            case 0:
                stepsTo("random values");
                return storeRandomValues(instance, random_, Reach::inside);
            case 1: {
                stepsTo("turn a control");
                const auto& params = play_.host().params();
                const ParamInfo& param = params[random_.bits() % params.size()];
                if (param.hasValue()) instance.setValue(param.id, param.defaultValue);
                return;
            }
            case 2:
                stepsTo("flatten and resetup");
                return expectNone(instance.flatten() || instance.resetup());
            case 3:
                stepsTo("save");
                instance.save();
                return;
            case 4:
                stepsTo("duplicate");
                copy_.reset();
                copy_.emplace(instance.duplicate());
                return;
            case 5:
                stepsTo("dialog");
                play_.host().dialog().answer = kStandinDialogClose;
                return expectNone(instance.openDialog());
            case 6:
                stepsTo("new instance");
                return play_.renewInstance();
            case 7:
                stepsTo("start again");
                copy_.reset();
                return play_.restart();
            case 8:
                stepsTo("dynamic flags");
                instance.queryDynamicFlags();
                return;
            default:
                return frame();
        }
    }

    // Any command from 0 to 30 at any time.
    void wildStep() {
        const PF_Cmd command = random_.below(31);
        stepsTo(commandName(command));
        Instance& instance = play_.instance();
        switch (command) {
            case PF_Cmd_RENDER:
            case PF_Cmd_SMART_RENDER:
            case PF_Cmd_SMART_PRE_RENDER:
                return frame();
            case PF_Cmd_SEQUENCE_SETUP:
                setUpSecondSequence(instance);
                return;
            case PF_Cmd_SEQUENCE_RESETUP:
                if (random_.oneIn(3)) instance.replaceSequenceData(anyBytes());
                instance.resetup();
                return;
            case PF_Cmd_SEQUENCE_FLATTEN:
                if (random_.oneIn(3)) instance.replaceSequenceData(anyBytes());
                instance.flatten();
                return;
            case PF_Cmd_SEQUENCE_SETDOWN:
                instance.setDown();
                if (random_.oneIn(2)) RawCommand(instance).send(PF_Cmd_QUERY_DYNAMIC_FLAGS);
                return play_.renewInstance();
            case PF_Cmd_DO_DIALOG:
                play_.host().dialog().answer = kDialogAnswers[random_.below(4)];
                break;
            default:
                break;
        }
        RawCommand(instance).send(command, random_.between(-1, 70));
    }

  private:
    static constexpr A_long kDialogAnswers[] = {kStandinDialogClose, kStandinDialogFirstButton,
                                                kStandinDialogSecondButton, 9999};

    void stepsTo(const std::string& what) { report_.at(text(place_, " ", what)); }
    void expectNone(PF_Err code) { report_.expectSame<PF_Err>(code, 0, "the code"); }

    std::vector<std::uint8_t> anyBytes() {
        std::vector<std::uint8_t> bytes(static_cast<std::size_t>(random_.below(50)));
        for (auto& byte : bytes) byte = static_cast<std::uint8_t>(random_.bits());
        return bytes;
    }

    // Small, on any way, sometimes planned in vain or stopped.
    void frame() {
        const Way way = random_.oneOf(std::span<const Way>(kWays));
        stepsTo("frame, " + name(way));
        FrameRequest request = frameOf(way, random_.between(1, 40), random_.between(1, 30));
        request.currentTime = random_.between(-3, 100);
        request.discardedPlans = random_.below(3);
        request.planOnly = random_.oneIn(6);
        request.withholdPlanData = random_.oneIn(10);
        const bool stopped = random_.oneIn(5);
        if (stopped) play_.host().faults().failAt(CallKind::abort, random_.between(1, 4));
        renderFrame(copy_ && random_.oneIn(3) ? *copy_ : play_.instance(), request);
        play_.host().faults().clear();
    }

    Image mark() {
        if (!play_.host().started()) play_.restart();
        Instance fresh(play_.host(), kSmallLayer);
        FrameRequest request = frameOf(kWays[0]);
        return renderFrame(fresh, request).output;
    }

    const Subject& subject_;
    Report& report_;
    OwnFolder folder_;
    Play play_;
    std::optional<Instance> copy_;
    Random random_;
    std::string place_;
    Image first_;
};

void byGrammar(const Subject& subject, Report& report) {
    Walk(subject, report).run(1500, &Walk::grammarStep);
}

void wild(const Subject& subject, Report& report) {
    Walk(subject, report).run(3000, &Walk::wildStep);
}

}  // namespace

std::span<const Check> walkChecks() {
    static constexpr Check kChecks[] = {
        {"walks.by_grammar", 8, 90, "Commands in any order that a host may send", byGrammar},
        {"walks.wild", 8, 90, "Commands 0 to 30 in any order at all", wild},
    };
    return kChecks;
}

}  // namespace validate
