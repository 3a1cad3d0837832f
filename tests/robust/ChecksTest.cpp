// The checks that "streakfall validate" runs, on the module of this build.
#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <set>
#include <string_view>

#include "validate/Check.h"
#include "validate/Runner.h"

namespace validate {

void PrintTo(const Check& check, std::ostream* out) { *out << check.name; }

}  // namespace validate

namespace {

using namespace validate;

// Higher ones take longer than a test may: run "streakfall validate --level 10".
constexpr int kHighestTestLevel = 8;

bool isAboutThreads(const Check& check) {
    return std::string_view(check.name).starts_with("threads.");
}

std::vector<Check> checksThat(bool (*suit)(const Check&)) {
    std::vector<Check> chosen;
    std::ranges::copy_if(allChecks(), std::back_inserter(chosen), suit);
    return chosen;
}

class ModuleChecks : public testing::TestWithParam<Check> {};

TEST_P(ModuleChecks, Pass) {
    const CheckResult result = runCheck(GetParam(), {.modulePath = STREAKFALL_MODULE});
    for (const std::string& finding : result.findings) ADD_FAILURE() << finding;
    for (const std::string& note : result.notes) std::cout << note << "\n";
}

std::string nameOf(const testing::TestParamInfo<Check>& info) {
    std::string name = info.param.name;
    std::ranges::replace(name, '.', '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(Quick, ModuleChecks, testing::ValuesIn(checksThat([](const Check& check) {
                             return check.level <= kHighestTestLevel && !isAboutThreads(check);
                         })),
                         nameOf);
INSTANTIATE_TEST_SUITE_P(Threads, ModuleChecks, testing::ValuesIn(checksThat(isAboutThreads)),
                         nameOf);

TEST(ListOfChecks, NamesEachOnceByLevel) {
    std::set<std::string> names;
    int level = 1;
    for (const Check& check : allChecks()) {
        EXPECT_TRUE(names.insert(check.name).second) << check.name;
        EXPECT_GE(check.level, level) << check.name;
        EXPECT_LE(check.level, kHighestLevel) << check.name;
        level = check.level;
    }
}

}  // namespace
