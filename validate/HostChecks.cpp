// Hosts of every kind, where the interface leaves open how a host does a thing.
#include "host/HostOffer.h"
#include "validate/Checks.h"
#include "validate/Frames.h"

namespace validate {
namespace {

using namespace standin;

constexpr HostOffer::SequencePlace kPlaces[] = {HostOffer::SequencePlace::both,
                                                HostOffer::SequencePlace::inData,
                                                HostOffer::SequencePlace::outData};
constexpr HostOffer::PathAnswer kAnswers[] = {
    HostOffer::PathAnswer::told, HostOffer::PathAnswer::toldBesideCode,
    HostOffer::PathAnswer::nothing, HostOffer::PathAnswer::foreignBytes};

std::vector<HostOffer> allKinds() {
    std::vector<HostOffer> kinds;
    for (const auto place : kPlaces) {
        for (const auto answer : kAnswers) {
            for (int switches = 0; switches < 16; ++switches) {
                HostOffer offer;
                offer.sequencePlace = place;
                offer.pathAnswer = answer;
                offer.disposesFlat = (switches & 1) != 0;
                offer.resetsUpBeforeChange = (switches & 2) != 0;
                offer.dirtyChangeWords = (switches & 4) != 0;
                offer.callsBack = (switches & 8) != 0;
                kinds.push_back(offer);
            }
        }
    }
    return kinds;
}

std::string name(const HostOffer& offer) {
    return text("sequence data ", static_cast<int>(offer.sequencePlace), ", path ",
                static_cast<int>(offer.pathAnswer), offer.disposesFlat ? "" : ", keeps flat data",
                offer.resetsUpBeforeChange ? ", sets up again before a change" : "",
                offer.dirtyChangeWords ? ", dirty words" : "",
                offer.callsBack ? ", calls back" : "");
}

// A life with all that differs: changes, saving, a copy and the dialog. Its last pictures.
std::vector<Image> live(Play& play, Report& report) {
    Instance& instance = play.instance();
    if (const ParamInfo* const start = play.host().param(std::string("Start Point"))) {
        for (const double x : {10.0, 20.0}) {
            report.expectSame<PF_Err>(instance.setValue(start->id, Value::point(x, 15)), 0,
                                      "the code of a change");
        }
    }
    storeBusyValues(play, Dabs::small);
    report.expectSame<PF_Err>(instance.updatePanel(), 0, "the code of an update of the panel");
    report.expectSame<PF_Err>(instance.openDialog(), 0, "the code of the dialog");
    instance.save();
    std::vector<Image> pictures;
    for (const Way& way : kWays) pictures.push_back(play.picture(frameOf(way)));
    Instance copy = instance.duplicate();
    pictures.push_back(renderFrame(copy, frameOf(kWays[0])).output);
    report.expectSame<PF_Err>(copy.setDown(), 0, "the code of the copy's setdown");
    return pictures;
}

void everyKind(const Subject& subject, Report& report) {
    Play usual(subject, report);
    const std::vector<Image> expected = live(usual, report);
    usual.end();
    const std::vector<HostOffer> kinds = allKinds();
    for (const HostOffer& offer : kinds) {
        report.at(name(offer));
        Play play(subject, report, offer);
        const std::vector<Image> pictures = live(play, report);
        for (std::size_t i = 0; i < pictures.size(); ++i) {
            report.expectNone(difference(pictures[i], expected[i]));
        }
        play.end();
    }
    report.at("");
    report.note(text(kinds.size(), " kinds of hosts"));
}

}  // namespace

std::span<const Check> hostChecks() {
    static constexpr Check kChecks[] = {
        {"hosts.every_kind", 3, 60,
         "Hosts that hand over and keep things in other ways get the same pictures", everyKind},
    };
    return kChecks;
}

}  // namespace validate
