// Commands that mean nothing to the effect, and those of the panel.
#include <cstring>

#include "validate/Checks.h"
#include "validate/Frames.h"
#include "validate/Play.h"
#include "validate/RawCommand.h"

namespace validate {
namespace {

using namespace standin;

void unknownCommands(const Subject& subject, Report& report) {
    Play play(subject, report);
    std::vector<PF_Cmd> commands = {2,  10, 12, 15, 16,        17,       19,
                                    20, 21, 22, -1, INT32_MIN, INT32_MAX};
    for (PF_Cmd command = 25; command <= 40; ++command) commands.push_back(command);
    for (const PF_Cmd command : commands) {
        report.at(commandName(command));
        Command sent(play.host(), nullptr);
        std::memset(static_cast<void*>(&sent.out), 0x5A, sizeof sent.out);
        const PF_OutData before = sent.out;
        report.expectSame<PF_Err>(sent.run(command), 0, "the code");
        report.expect(std::memcmp(&sent.out, &before, sizeof before) == 0, "out_data is changed");
        play.expectTidy();
    }
    play.end();
}

// A control that the user turns may let others live or not, and changes no picture by itself.
void panel(const Subject& subject, Report& report) {
    Play play(subject, report);
    const FrameRequest request = frameOf(kWays[0]);
    const Image before = play.picture(request);
    for (const ParamInfo& param : play.host().params()) {
        if (!param.hasValue()) continue;
        report.at("turning \"" + param.name + "\"");
        const Value old = play.instance().value(param.id);
        Value turned = old;
        turned.part[0] = param.type == PF_Param_CHECKBOX ? 1 - old.part[0] : old.part[0] + 1;
        report.expectSame<PF_Err>(play.instance().setValue(param.id, turned), 0, "the code");
        report.expectSame<PF_Err>(play.instance().setValue(param.id, old), 0, "the code");
        play.expectTidy();
    }
    report.at("");
    report.expectNone(difference(play.picture(request), before));
    play.end();
}

void dialog(const Subject& subject, Report& report) {
    Play play(subject, report);
    if (play.host().global().outFlags & PF_OutFlag_I_DO_DIALOG) {
        report.expectSame<PF_Err>(play.instance().openDialog(), 0, "the code of a closed dialog");
    }
    play.end();
}

}  // namespace

std::span<const Check> commandChecks() {
    static constexpr Check kChecks[] = {
        {"commands.unknown", 1, 20, "Commands without a meaning answer 0 and touch nothing",
         unknownCommands},
        {"commands.panel", 2, 20, "Every control can be turned and turned back", panel},
        {"commands.dialog", 2, 20, "A dialog that is closed answers 0", dialog},
    };
    return kChecks;
}

}  // namespace validate
