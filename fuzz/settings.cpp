// A settings file of any text: the effect's start with it, the storing over it, and the command
// line's reading of it.
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>

#include "Failure.h"
#include "ParamArguments.h"
#include "Stage.h"
#include "host/Instance.h"
#include "platform/PrivateProfile.h"
#include "validate/OwnFolder.h"

using namespace fuzz;
using namespace standin;
namespace profile = streakfall::platform::profile;

namespace {

constexpr char kSection[] = "Version=1.5";

const validate::OwnFolder& folder() {
    static validate::Report report(2);
    static const validate::OwnFolder own(report);
    return own;
}

Stage& stage() {
    static Stage only(folder().offer());
    return only;
}

void replaceInText(std::string_view text) {
    const std::string replaced = profile::withValue(text, kSection, "Taper", "12.5");
    expect(profile::findValue(replaced, kSection, "Taper") == "12.5", "the value is not found in ",
           replaced);
    expect(profile::withValue(replaced, kSection, "Taper", "12.5") == replaced,
           "the same value again makes another text of ", replaced);
    expect(profile::findValue(replaced, kSection, "Thickness") ==
               profile::findValue(text, kSection, "Thickness"),
           "another key's value changes in ", text);
}

std::vector<Value> defaults(Host& host) {
    std::vector<Value> values;
    // Angles are stored in fewer digits than they have.
    for (const ParamInfo& param : host.params()) {
        if (param.type != PF_Param_ANGLE) values.push_back(param.defaultValue);
    }
    return values;
}

// A number is stored with six decimals.
bool storedAlike(const Value& a, const Value& b) {
    constexpr double kHalfADecimal = 0.5000001e-6;
    return std::ranges::equal(a.part, b.part, [](double x, double y) {
        return x == y || std::fabs(x - y) <= kHalfADecimal;
    });
}

void startAndStore(std::string_view text) {
    static const std::size_t count = stage().host().params().size();
    folder().writeSettings(std::string(text));
    stage().restart();
    expect(stage().host().params().size() == count, "another number of parameters");
    {
        Instance instance(stage().host(), {64, 48});
        stage().host().dialog().answer = kStandinDialogFirstButton;
        const PF_Err code = instance.openDialog();
        expect(code == PF_Err_NONE, "storing answers code ", code);
        stage().expectTidy();
    }
    const std::vector<Value> before = defaults(stage().host());
    stage().restart();
    expect(std::ranges::equal(defaults(stage().host()), before, storedAlike),
           "defaults that were stored come back otherwise");
}

void readAsArguments(std::string_view text) {
    folder().writeSettings(std::string(text));
    const tool::ParamLookup lookup(stage().host().params());
    try {
        const tool::ParamArguments arguments(lookup, kSection,
                                             {{folder().settings().string()}, {}, {}});
        (void)arguments.warnings();
    } catch (const tool::Failure& failure) {
        expect(failure.what()[0] != '\0', "a failure without words");
    }
}

}  // namespace

// Each input writes some hundred files; a file system in memory has them at once.
extern "C" int LLVMFuzzerInitialize(int*, char***) {
    constexpr char kInMemory[] = "/dev/shm";
    if (std::filesystem::is_directory(kInMemory)) ::setenv("TMPDIR", kInMemory, 1);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text = textOf(data, size);
    replaceInText(text);
    // Without either it holds no values.
    if (text.find_first_of("[{") == text.npos) return 0;
    startAndStore(text);
    readAsArguments(text);
    std::filesystem::remove(folder().settings());
    return 0;
}
