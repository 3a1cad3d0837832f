// The defaults that the user stored beside the module.
#include <filesystem>

#include "validate/Checks.h"
#include "validate/Frames.h"
#include "validate/OwnFolder.h"
#include "validate/Play.h"
#include "validate/Random.h"

namespace validate {
namespace {

using namespace standin;

PF_Err press(Play& play, A_long button) {
    play.host().dialog().answer = button;
    return play.instance().openDialog();
}

// Store, start again: the values are the new defaults. Restore, start again: the old ones are.
void storedDefaults(const Subject& subject, Report& report) {
    const OwnFolder folder(report);
    Play play(subject, report, folder.offer());
    if (!(play.host().global().outFlags & PF_OutFlag_I_DO_DIALOG)) return play.end();
    const std::vector<ParamInfo> builtIn = play.host().params();
    Random random(subject.seed);
    std::vector<Value> chosen;
    for (const ParamInfo& param : builtIn) {
        Value value = param.defaultValue;
        if (param.type == PF_Param_FLOAT_SLIDER) {
            // Six decimals are kept.
            value = Value::number(random.between(-8000, 8000) / 8.0);
        } else if (param.type == PF_Param_CHECKBOX) {
            value = Value::number(random.below(2));
        } else if (param.type == PF_Param_SLIDER) {
            value = Value::number(random.between(-1000, 1000));
        }
        chosen.push_back(value);
        if (param.hasValue() && param.type != PF_Param_POINT) {
            play.instance().storeValue(param.id, value);
        }
    }
    report.expectSame<PF_Err>(press(play, kStandinDialogFirstButton), 0, "the code of storing");
    play.restart();
    for (std::size_t i = 0; i < builtIn.size(); ++i) {
        report.expect(play.host().params()[i].defaultValue == chosen[i],
                      text("\"", builtIn[i].name, "\" opens at ",
                           play.host().params()[i].defaultValue.part[0], " and was stored as ",
                           chosen[i].part[0]));
    }
    report.expectSame<PF_Err>(press(play, kStandinDialogSecondButton), 0, "the code of restoring");
    report.expect(!std::filesystem::exists(folder.settings()), "restoring leaves the file");
    play.restart();
    for (std::size_t i = 0; i < builtIn.size(); ++i) {
        report.expect(play.host().params()[i].defaultValue == builtIn[i].defaultValue,
                      text("\"", builtIn[i].name, "\" is not restored"));
    }
    play.end();
}

// Lines of a stored file in disorder, with numbers that are none.
std::string damaged(const std::string& good, Random& random) {
    std::string content = good;
    for (int i = random.between(1, 40); i > 0; --i) {
        const std::size_t place = random.bits() % (content.size() + 1);
        static constexpr const char* kPieces[] = {
            "\n", "\r",   "=",   "[",        "]", "[Version=1.5]\r\n",
            ";",  "nan",  "inf", "1e999",    "-", "99999999999999999999",
            "\"", "0x10", "  ",  "\xFF\xFE",
        };
        switch (random.below(4)) {
            case 0:
                content.insert(place, random.oneOf(std::span<const char* const>(kPieces)));
                break;
            case 1:
                content.erase(place, static_cast<std::size_t>(random.below(60)));
                break;
            case 2:
                content.insert(place, 1, static_cast<char>(random.bits()));
                break;
            default:
                content.insert(place, content.substr(random.bits() % (content.size() + 1), 80));
        }
    }
    return content;
}

void anyFile(const Subject& subject, Report& report) {
    const OwnFolder folder(report);
    Play play(subject, report, folder.offer());
    if (!(play.host().global().outFlags & PF_OutFlag_I_DO_DIALOG)) return play.end();
    press(play, kStandinDialogFirstButton);
    const std::string good = folder.readSettings();
    const std::size_t count = play.host().params().size();
    Random random(subject.seed);
    for (int round = 0; round < 150; ++round) {
        report.at(text("seed ", subject.seed, " round ", round));
        folder.writeSettings(damaged(good, random));
        play.restart();
        report.expectSame(play.host().params().size(), count, "the number of parameters");
        // Defaults may come far past the ranges now; a frame comes back all the same.
        if (round % 5 == 0) play.picture(frameOf(kWays[0], 16, 12));
        if (round % 7 == 0) press(play, kStandinDialogFirstButton);
    }
    report.at("");
    play.end();
}

}  // namespace

std::span<const Check> settingsChecks() {
    static constexpr Check kChecks[] = {
        {"settings.stored_defaults", 3, 20, "Stored values are the next start's defaults",
         storedDefaults},
        {"settings.any_file", 5, 60, "Any text in the settings file leaves the effect whole",
         anyFile},
    };
    return kChecks;
}

}  // namespace validate
