// What the effect keeps with each instance, and what it reads back from projects.
#include "validate/Checks.h"
#include "validate/Frames.h"
#include "validate/Play.h"
#include "validate/Random.h"

namespace validate {
namespace {

using namespace standin;
using Bytes = std::vector<std::uint8_t>;

void savesTheSame(const Subject& subject, Report& report) {
    Play play(subject, report);
    const Bytes saved = play.instance().save();
    report.note(text(saved.size(), " bytes"));
    report.expect(play.instance().save() == saved, "a second save has other bytes");
    {
        Instance loaded(play.host(), kSmallLayer, saved);
        report.expect(loaded.save() == saved, "a loaded instance saves other bytes");
    }
    storeBusyValues(play, Dabs::small);
    Instance copy = play.instance().duplicate();
    const FrameRequest request = frameOf(kWays[0]);
    report.expectNone(difference(renderFrame(copy, request).output, play.picture(request)));
    report.expect(copy.save() == saved, "a copy saves other bytes");
    copy.setDown();
    play.end();
}

// Setup, flatten and resetup in any number; setdown of live, flat and no data.
void cycles(const Subject& subject, Report& report) {
    Play play(subject, report);
    for (int cycle = 0; cycle < 20; ++cycle) {
        report.at(text("cycle ", cycle));
        report.expectSame<PF_Err>(play.instance().flatten(), 0, "the code of flatten");
        if (cycle % 3 == 1) {
            report.expectSame<PF_Err>(play.instance().setDown(), 0, "the code of setdown");
            play.renewInstance();
            continue;
        }
        report.expectSame<PF_Err>(play.instance().resetup(), 0, "the code of resetup");
        // A project that was copied is set up twice.
        if (cycle % 3 == 2) play.instance().resetup();
        play.expectTidy();
    }
    report.at("");
    play.end();
}

// A block of a project: good ones with something wrong, and any bytes.
Bytes damaged(const Bytes& good, Random& random) {
    Bytes bytes = good;
    switch (random.below(5)) {
        case 0:
            bytes.resize(static_cast<std::size_t>(random.below(static_cast<int>(good.size()) + 1)));
            break;
        case 1:
            bytes.resize(good.size() + static_cast<std::size_t>(random.below(5000)));
            break;
        case 2:
            bytes.resize(static_cast<std::size_t>(random.below(64)));
            for (auto& byte : bytes) byte = static_cast<std::uint8_t>(random.bits());
            break;
        default:
            break;
    }
    for (int i = random.below(4); i > 0 && !bytes.empty(); --i) {
        bytes[random.bits() % bytes.size()] = static_cast<std::uint8_t>(random.bits());
    }
    return bytes;
}

void anyBytes(const Subject& subject, Report& report) {
    Play play(subject, report);
    Random random(subject.seed);
    const Bytes good = play.instance().save();
    const Bytes live = play.instance().sequenceBytes();
    const FrameRequest request = frameOf(kWays[0]);
    const Image expected = play.picture(request);
    for (int round = 0; round < 1500; ++round) {
        report.at(text("seed ", subject.seed, " round ", round));
        const Bytes bytes = damaged(round % 3 == 0 ? live : good, random);
        play.instance().replaceSequenceData(bytes);
        // Not all that comes can be used, but all can be met.
        if (random.oneIn(3)) play.instance().updatePanel();
        if (random.oneIn(3)) play.instance().flatten();
        report.expectSame<PF_Err>(play.instance().resetup(), 0, "the code of resetup");
        report.expect(play.instance().save() == good, "later saves have other bytes");
        play.expectTidy();
    }
    report.at("");
    report.expectNone(difference(play.picture(request), expected));
    play.end();
}

}  // namespace

std::span<const Check> sequenceChecks() {
    static constexpr Check kChecks[] = {
        {"sequence.saves_the_same", 2, 20, "What is saved, loaded and saved again is the same",
         savesTheSame},
        {"sequence.cycles", 2, 20, "Setup, flatten, resetup and setdown lose no handle", cycles},
        {"sequence.any_bytes", 5, 30, "Damaged blocks become fresh ones, without a code", anyBytes},
    };
    return kChecks;
}

}  // namespace validate
