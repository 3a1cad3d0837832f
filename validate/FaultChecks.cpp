// The n-th call of each kind that the effect makes to its host fails, n = 1 until none is left.
#include <algorithm>
#include <functional>

#include "validate/Checks.h"
#include "validate/FaultCodes.h"
#include "validate/Frames.h"
#include "validate/OwnFolder.h"
#include "validate/RawCommand.h"

namespace validate {
namespace {

using namespace standin;

constexpr CallKind kindOf(int number) { return static_cast<CallKind>(number); }

// Far from the codes that have a meaning.
constexpr PF_Err injectedFor(CallKind kind) { return 7000 + static_cast<PF_Err>(kind); }

std::string describe(const Fault& fault, const std::string& where) {
    return text(where, ", ", standin::name(fault.kind), " ", fault.n);
}

void expectCode(const Fault& fault, PF_Err code, Report& report) {
    const auto allowed = allowedCodes(fault);
    if (std::ranges::find(allowed, code) != allowed.end()) return;
    std::string wanted;
    for (const PF_Err each : allowed) wanted += text(wanted.empty() ? "" : " or ", each);
    report.finding(text("the code is ", code, " and should be ", wanted));
}

// What a life looks like when nothing fails, to hold against what comes after a failure.
struct Undisturbed {
    FrameRequest request;
    Image picture;
    std::vector<std::uint8_t> saved;
};

Undisturbed lookAt(Play& play, const FrameRequest& request) {
    return {request, play.picture(request), play.instance().save()};
}

// The instance is as good as ever: it saves the same and draws the same.
void expectRecovered(Play& play, const Undisturbed& wanted, Report& report) {
    report.expect(play.instance().save() == wanted.saved, "afterwards other bytes are saved");
    report.expectNone(difference(play.picture(wanted.request), wanted.picture));
}

// A good picture, or what lies under it, or nothing at all. What fails behind the last line has a
// code and the good picture.
void expectOutput(Play& play, const FrameResult& result, const Undisturbed& wanted,
                  Report& report) {
    if (!result.rendered) return;
    const std::string fault = difference(result.output, wanted.picture);
    if (fault.empty()) return;
    report.expect(result.code != PF_Err_NONE, fault);
    const Image& input = wanted.request.input;
    const bool untouched = result.unwritten == long{input.width()} * input.height();
    if (untouched) return;
    const std::string changed = difference(result.output, backgroundOf(play, wanted.request));
    report.expect(changed.empty(),
                  "the output is neither whole nor background nor untouched: " + changed);
}

// One thing that the effect is made to do while calls fail.
struct Act {
    Scene scene;
    std::string where;
    std::function<PF_Err(Play&, const Undisturbed&)> run;
    Depth depth = Depth::bits8;
};

// Sweeps one act over the kinds of calls. Every fault meets an effect whose suites are not
// acquired yet when `cold`, one that has drawn before otherwise.
class Sweep {
  public:
    Sweep(const Subject& subject, Report& report, HostOffer offer = {})
        : subject_(subject), report_(report), offer_(std::move(offer)) {}

    long faults() const { return faults_; }

    void sweep(const Act& act, const FrameRequest& request,
               const std::function<void(Play&)>& prepare) {
        for (int number = 0; number < kCallKinds; ++number) {
            const CallKind kind = kindOf(number);
            if (!canFail(kind)) continue;
            if (kind == CallKind::acquireSuite || kind == CallKind::releaseSuite) {
                sweepCold(act, kind, request, prepare);
            } else {
                sweepWarm(act, kind, request, prepare);
            }
        }
    }

  private:
    Fault faultOf(const Act& act, CallKind kind) const {
        return {
            .scene = act.scene, .kind = kind, .injected = injectedFor(kind), .depth = act.depth};
    }

    // False when there was no n-th call.
    bool inject(const Act& act, Fault fault, Play& play, const Undisturbed& wanted) {
        report_.at(describe(fault, act.where));
        Faults& faults = play.host().faults();
        faults.clear();
        faults.failAt(fault.kind, fault.n, fault.injected);
        const PF_Err code = act.run(play, wanted);
        const bool failed = faults.failures() > 0;
        faults.clear();
        if (failed) {
            ++faults_;
            expectCode(fault, code, report_);
            if (hostIsToBlame(fault)) play.host().ledger().clearViolations();
        } else {
            report_.expectSame<PF_Err>(code, 0, "the code without a failure");
        }
        play.expectTidy();
        return failed;
    }

    void sweepWarm(const Act& act, CallKind kind, const FrameRequest& request,
                   const std::function<void(Play&)>& prepare) {
        Play play(subject_, report_, offer_);
        prepare(play);
        const Undisturbed wanted = lookAt(play, request);
        Fault fault = faultOf(act, kind);
        play.host().faults().clear();
        act.run(play, wanted);
        fault.total = play.host().faults().calls(kind);
        expectRecovered(play, wanted, report_);
        const Balance before = play.host().ledger().balance();
        for (fault.n = 1; inject(act, fault, play, wanted); ++fault.n) {
            expectRecovered(play, wanted, report_);
            report_.expectNone(play.host().ledger().changedSince(before));
        }
        expectRecovered(play, wanted, report_);
        play.end();
    }

    void sweepCold(const Act& act, CallKind kind, const FrameRequest& request,
                   const std::function<void(Play&)>& prepare) {
        Undisturbed wanted;
        {
            Play play(subject_, report_, offer_);
            prepare(play);
            wanted = lookAt(play, request);
            play.end();
        }
        Fault fault = faultOf(act, kind);
        for (bool failed = true; failed; ++fault.n) {
            Play play(subject_, report_, offer_);
            prepare(play);
            failed = inject(act, fault, play, wanted);
            expectRecovered(play, wanted, report_);
            play.end();
        }
    }

    const Subject& subject_;
    Report& report_;
    HostOffer offer_;
    long faults_ = 0;
};

void frameFaults(const Subject& subject, Report& report) {
    Sweep sweep(subject, report);
    for (const Way& way : kWays) {
        for (const Dabs dabs : {Dabs::small, Dabs::large}) {
            for (const bool clear : {true, false}) {
                // One background is enough for one of the sizes.
                if (dabs == Dabs::large && clear) continue;
                Act act{Scene::frame,
                        text(name(way), dabs == Dabs::small ? " small" : " large", " dabs",
                             clear ? ", cleared" : ""),
                        [&](Play& play, const Undisturbed& wanted) {
                            const FrameResult result = play.render(wanted.request);
                            expectOutput(play, result, wanted, report);
                            return result.code;
                        },
                        way.depth};
                sweep.sweep(act, frameOf(way, 32, 24), [&](Play& play) {
                    storeBusyValues(play, dabs);
                    play.set("Clear Background", clear);
                });
            }
        }
    }
    report.at("");
    report.note(text(sweep.faults(), " faults"));
}

PF_Err sendRaw(Play& play, PF_Cmd command) { return RawCommand(play.instance()).send(command); }

void commandFaults(const Subject& subject, Report& report) {
    const OwnFolder folder(report);
    Sweep sweep(subject, report, folder.offer());
    const auto act = [](Scene scene, PF_Err (*run)(Play&)) {
        return Act{scene, name(scene), [run](Play& play, const Undisturbed&) { return run(play); }};
    };
    const Act acts[] = {
        act(Scene::about, [](Play& play) { return sendRaw(play, PF_Cmd_ABOUT); }),
        act(Scene::panel, [](Play& play) { return sendRaw(play, PF_Cmd_UPDATE_PARAMS_UI); }),
        act(Scene::changed, [](Play& play) { return sendRaw(play, PF_Cmd_USER_CHANGED_PARAM); }),
        act(Scene::dynamicFlags,
            [](Play& play) { return sendRaw(play, PF_Cmd_QUERY_DYNAMIC_FLAGS); }),
        act(Scene::sequenceSetup, [](Play& play) { return setUpSecondSequence(play.instance()); }),
        act(Scene::flatten, [](Play& play) { return play.instance().flatten(); }),
        act(Scene::dialog, [](Play& play) { return sendRaw(play, PF_Cmd_DO_DIALOG); }),
    };
    const FrameRequest request = frameOf(kWays[0], 32, 24);
    const auto prepare = [](Play& play) {
        play.host().dialog().answer = kStandinDialogFirstButton;
        play.set("Link End Point", 1);
    };
    for (const Act& each : acts) sweep.sweep(each, request, prepare);

    const Act resetup{Scene::resetup, name(Scene::resetup),
                      [](Play& play, const Undisturbed& wanted) {
                          play.instance().replaceSequenceData(wanted.saved);
                          return play.instance().resetup();
                      }};
    sweep.sweep(resetup, request, [](Play&) {});
    report.at("");
    report.note(text(sweep.faults(), " faults"));
}

// A start that fails leaves nothing, and the next one is whole.
void startFaults(const Subject& subject, Report& report) {
    long faults = 0;
    Play undisturbed(subject, report);
    const std::size_t params = undisturbed.host().params().size();
    undisturbed.end();
    for (int number = 0; number < kCallKinds; ++number) {
        Fault fault{.scene = Scene::start, .kind = kindOf(number)};
        fault.injected = injectedFor(fault.kind);
        if (!canFail(fault.kind)) continue;
        for (bool failed = true; failed; ++fault.n) {
            report.at(describe(fault, name(fault.scene)));
            Host host(moduleOf(subject, report));
            host.faults().failAt(fault.kind, fault.n, fault.injected);
            const PF_Err code = host.start();
            failed = host.faults().failures() > 0;
            host.faults().clear();
            if (failed) {
                ++faults;
                expectCode(fault, code, report);
            }
            report.expectSame<PF_Err>(host.stop(), 0, "the code of the stop");
            reportViolations(host, report);
            report.expectNone(host.ledger().unbalanced());
            report.expectSame<PF_Err>(host.start(), 0, "the code of the next start");
            report.expectSame(host.params().size(), params, "the number of parameters");
            report.expectSame<PF_Err>(host.stop(), 0, "the code of its stop");
            report.expectNone(host.ledger().unbalanced());
        }
    }
    report.at("");
    report.note(text(faults, " faults"));
}

void stopFaults(const Subject& subject, Report& report) {
    long faults = 0;
    for (int number = 0; number < kCallKinds; ++number) {
        Fault fault{.scene = Scene::stop, .kind = kindOf(number)};
        fault.injected = injectedFor(fault.kind);
        if (!canFail(fault.kind)) continue;
        for (bool failed = true; failed; ++fault.n) {
            report.at(describe(fault, name(fault.scene)));
            Play play(subject, report);
            play.picture(frameOf(kWays[0], 32, 24));
            play.instance().setDown();
            play.host().faults().failAt(fault.kind, fault.n, fault.injected);
            const PF_Err code = play.host().stop();
            failed = play.host().faults().failures() > 0;
            faults += failed;
            if (failed) expectCode(fault, code, report);
            reportViolations(play.host(), report);
            report.expectNone(play.host().ledger().unbalanced());
        }
    }
    report.at("");
    report.note(text(faults, " faults"));
}

// Which code comes of which suite, in the order in which a first frame asks for them: the world's
// format, the background, the line buffer, the composite, the buffer's end.
void productSuites(const Subject& subject, Report& report) {
    constexpr PF_Err kInjected = 7000;
    struct Row {
        CallKind kind;
        PF_Err codes[5];
    };
    static constexpr Row kRows[] = {
        {CallKind::acquireSuite, {0, 512, 0, 512, 0}},
        {CallKind::releaseSuite, {kInjected, kInjected, 0, 0, 0}},
    };
    for (const Way& way : kWays) {
        if (way.depth == Depth::float32) continue;
        for (const Row& row : kRows) {
            for (long n = 1; n <= 5; ++n) {
                report.at(text(name(way), ", ", standin::name(row.kind), " ", n));
                Play play(subject, report);
                play.host().faults().failAt(row.kind, n, kInjected);
                report.expectSame(play.render(frameOf(way)).code, row.codes[n - 1], "the code");
                play.host().faults().clear();
                play.end();
            }
        }
    }
}

}  // namespace

std::span<const Check> faultChecks() {
    static constexpr Check kChecks[] = {
        {"faults.start", 6, 60, "Every call of the host that fails during the start", startFaults},
        {"faults.stop", 6, 30, "Every call of the host that fails during the stop", stopFaults},
        {"faults.commands", 6, 60, "Every call of the host that fails in a command", commandFaults},
        {"faults.frames", 7, 180, "Every call of the host that fails in a frame", frameFaults},
        {"product.suite_failures", 7, 20, "Which missing suite gives which code", productSuites},
    };
    return kChecks;
}

}  // namespace validate
