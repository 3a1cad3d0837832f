// Effects that misbehave on purpose must be caught, each by the check that is made for it and in
// words that tell what is wrong. The one that keeps all rules must pass every check.
#include <gtest/gtest.h>

#include <algorithm>

#include "validate/Check.h"
#include "validate/Runner.h"

namespace {

using namespace validate;

struct Catch {
    const char* stub;
    const char* check;
    const char* words;       // part of a finding
    double patience = 20.0;  // a stub that hangs is not waited for so long
};

constexpr Catch kCatches[] = {
    {"LeaksHandle", "life.whole", "handle: 5 not given back"},
    {"ForgetsCheckIn", "life.whole", "checked-out parameter not given back"},
    {"KeepsSuite", "life.whole", "\"PF Fill Matte Suite\" 2: 5 not given back"},
    {"WritesPastRow", "life.whole", "outside the pixels of the input or the output"},
    {"WritesPadding", "worlds.layouts", "outside the pixels of the input or the output"},
    {"ChangesInput", "life.whole", "changed the input's pixels"},
    {"LeavesPixels", "life.whole", "pixels of the output were never written"},
    {"Throws", "life.whole", "8 bits legacy: an exception left the effect in RENDER"},
    {"ThrowsFromDeleter", "life.whole", "an exception left the deleter"},
    {"Hangs", "life.whole", "8 bits smart: still running", 0.05},
    {"Crashes", "life.whole", "8 bits smart: crashed with signal"},
    {"Exits", "life.whole", "8 bits smart: the module ended the process"},
    {"SwallowsCode", "faults.frames", "copy 1: the code is 0"},
    {"WrongCode", "faults.commands", "the code is 513"},
    {"PaintsOnAbort", "frames.abort", "abort 1: 64 pixels differ"},
    {"RemembersFrames", "frames.any_order", "in disorder: "},
    {"RoadsDiffer", "frames.roads_agree", "pixels differ"},
    {"SharesId", "params.consistent", "shares the id 11"},
    {"KnowsTooMuch", "commands.unknown", "command 25: the code is 516"},
    {"TrustsBlocks", "sequence.any_bytes", ": crashed with signal"},
    {"SharesScratch", "threads.frames", "pixels differ"},
    {"LoopsOnValues", "values.edges", "\"Thickness\" at ", 0.03},
    {"PlansTooMuch", "worlds.parts", "the result is larger than what was asked for"},
    {"FreezesInput", "worlds.odd_requests", "checkout of the input at another time"},
    {"IgnoresField", "worlds.odd_requests", "transfer of another field than the frame's"},
    {"LosesSequence", "sequence.cycles", "handle: "},
    {"GrowsMemory", "soak.short", "memory has grown by "},
};

Subject subjectOf(const std::string& stub) {
    return {.modulePath = std::string(STREAKFALL_STUBS) + "/" + stub + ".so", .soakFrames = 1000};
}

const Check& checkNamed(const std::string& name) {
    const auto found = std::ranges::find(allChecks(), name, &Check::name);
    if (found == allChecks().end()) throw std::invalid_argument("no check " + name);
    return *found;
}

std::string joined(const CheckResult& result) {
    std::string all;
    for (const std::string& finding : result.findings) all += finding + "\n";
    return all;
}

void PrintTo(const Catch& one, std::ostream* out) { *out << one.stub << " by " << one.check; }

class Stubs : public testing::TestWithParam<Catch> {};

TEST_P(Stubs, AreCaught) {
    Subject subject = subjectOf(GetParam().stub);
    subject.patience = GetParam().patience;
    const CheckResult result = runCheck(checkNamed(GetParam().check), subject);
    EXPECT_NE(joined(result).find(GetParam().words), std::string::npos) << joined(result);
}

INSTANTIATE_TEST_SUITE_P(All, Stubs, testing::ValuesIn(kCatches),
                         [](const auto& one) { return std::string(one.param.stub); });

TEST(GoodStub, PassesEveryCheck) {
    for (const Check& check : allChecks()) {
        if (std::string_view(check.name).starts_with("product.")) continue;
        EXPECT_EQ(joined(runCheck(check, subjectOf("Good"))), "") << check.name;
    }
}

TEST(NoModule, IsAFinding) {
    const Subject subject{.modulePath = "/nowhere/Module.so"};
    EXPECT_NE(joined(runCheck(checkNamed("life.whole"), subject)).find("no such file"),
              std::string::npos);
}

}  // namespace
