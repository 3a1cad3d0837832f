// The effect comes up, works and goes, any number of times, and leaves nothing.
#include "host/Command.h"
#include "validate/Checks.h"
#include "validate/Frames.h"
#include "validate/Play.h"

namespace validate {
namespace {

using namespace standin;

void wholeLife(const Subject& subject, Report& report) {
    Play play(subject, report);
    for (const Way& way : kWays) {
        report.at(name(way));
        play.picture(frameOf(way));
    }
    report.at("");
    play.end();
}

void laterLives(const Subject& subject, Report& report) {
    Play play(subject, report);
    const Way way = kWays[0];
    storeBusyValues(play, Dabs::small);
    const Image first = play.picture(frameOf(way));
    const std::size_t params = play.host().params().size();
    for (int life = 2; life <= 4; ++life) {
        report.at(text("life ", life));
        play.restart();
        report.expectSame(play.host().params().size(), params, "the number of parameters");
        storeBusyValues(play, Dabs::small);
        report.expectNone(difference(play.picture(frameOf(way)), first));
    }
    play.end();
}

// Hosts send global setup first. An effect whose first call is another one must still stand.
void anyFirstCommand(const Subject& subject, Report& report) {
    Module& module = moduleOf(subject, report);
    static constexpr PF_Cmd kFirst[] = {
        PF_Cmd_ABOUT,
        PF_Cmd_GLOBAL_SETUP,
        PF_Cmd_UNUSED_0,
        PF_Cmd_GLOBAL_SETDOWN,
        PF_Cmd_SEQUENCE_SETUP,
        PF_Cmd_SEQUENCE_RESETUP,
        PF_Cmd_FRAME_SETUP,
        PF_Cmd_EVENT,
        PF_Cmd_AUDIO_SETUP,
        PF_Cmd{25},
        PF_Cmd{30},
    };
    for (const PF_Cmd command : kFirst) {
        report.at(commandName(command) + " as the first call");
        Host host(module);
        Command first(host, nullptr);
        report.expectSame<PF_Err>(first.run(command), 0, "the code");
        Command setdown(host, nullptr);
        setdown.in.sequence_data = first.out.sequence_data;
        setdown.run(PF_Cmd_SEQUENCE_SETDOWN);
        report.expectSame<PF_Err>(host.send(PF_Cmd_GLOBAL_SETDOWN), 0, "the code of setdown");
        reportViolations(host, report);
        report.expectNone(host.ledger().unbalanced());
    }
}

// A suite that is not there, a host without a user interface, a very old one: every answer is a
// code, and nothing is left behind.
void poorHosts(const Subject& subject, Report& report) {
    struct Poor {
        const char* name;
        void (*make)(HostOffer&);
    };
    static constexpr Poor kPoor[] = {
        {"no services", [](HostOffer& o) { o.basicSuite = false; }},
        {"no handles", [](HostOffer& o) { o.handleSuite = false; }},
        {"no fill", [](HostOffer& o) { o.fillMatteSuite = false; }},
        {"no transform", [](HostOffer& o) { o.worldTransformSuite = false; }},
        {"no controls", [](HostOffer& o) { o.paramUtilsSuite = false; }},
        {"no application", [](HostOffer& o) { o.appSuite = false; }},
        {"old worlds", [](HostOffer& o) { o.worldSuite2 = false; }},
        {"no worlds", [](HostOffer& o) { o.worldSuite1 = o.worldSuite2 = false; }},
        {"render engine", [](HostOffer& o) { o.renderEngine = true; }},
        {"old", [](HostOffer& o) { o = HostOffer::old(); }},
        {"another application", [](HostOffer& o) { o.applId = kAppID_PrMr; }},
    };
    Module& module = moduleOf(subject, report);
    for (const Poor& poor : kPoor) {
        report.at(text("host with ", poor.name));
        HostOffer offer;
        poor.make(offer);
        Host host(module, offer);
        try {
            if (host.start() == PF_Err_NONE) {
                Instance instance(host, kSmallLayer);
                for (const Way& way : kWays) {
                    // Without the newer world suite nobody can tell a float world.
                    if (way.depth == Depth::float32 && !offer.worldSuite2) continue;
                    renderFrame(instance, frameOf(way));
                }
            }
        } catch (const EffectError&) {
            // Refused with a code, as it may be.
        }
        host.stop();
        reportViolations(host, report);
        report.expectNone(host.ledger().unbalanced());
    }
}

// Two hosts share the module: the first to come may be the first to go.
void hostsTakeTurns(const Subject& subject, Report& report) {
    Play first(subject, report);
    auto second = std::make_unique<Play>(subject, report);
    const Image alone = first.picture(frameOf(kWays[0]));
    report.expectNone(difference(second->picture(frameOf(kWays[0])), alone));
    second->end();
    report.at("after the other host is gone");
    report.expectNone(difference(first.picture(frameOf(kWays[0])), alone));
    first.end();
}

}  // namespace

std::span<const Check> lifeChecks() {
    static constexpr Check kChecks[] = {
        {"life.whole", 1, 20, "A life with a frame on every way leaves the host's books empty",
         wholeLife},
        {"life.again", 2, 20, "Later lives of a loaded module are like the first", laterLives},
        {"life.any_first_command", 2, 20, "Any command may be the first call", anyFirstCommand},
        {"life.poor_hosts", 3, 30, "A host that lacks something gets codes and loses nothing",
         poorHosts},
        {"life.hosts_take_turns", 3, 20, "Hosts that share the module do not disturb each other",
         hostsTakeTurns},
    };
    return kChecks;
}

}  // namespace validate
