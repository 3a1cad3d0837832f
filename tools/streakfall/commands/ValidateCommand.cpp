#include <fmt/chrono.h>
#include <unistd.h>

#include <algorithm>
#include <ctime>
#include <memory>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <vector>

#include "Commands.h"
#include "EffectSession.h"
#include "Failure.h"
#include "Say.h"
#include "validate/Check.h"
#include "validate/Runner.h"

namespace tool {

namespace {

using Json = nlohmann::ordered_json;
using validate::Check;
using validate::CheckResult;

// Enough for a look at a fresh build, in seconds.
constexpr int kUsualLevel = 5;

struct ValidateOptions {
    std::string module;
    std::string filter;
    int level = 0;  // 0: not given
    bool list = false;
    bool json = false;
    validate::Subject subject;
};

// A name that is asked for is run whatever its level.
std::vector<Check> chosenChecks(const ValidateOptions& options) {
    const int level = options.level != 0       ? options.level
                      : options.filter.empty() ? kUsualLevel
                                               : validate::kHighestLevel;
    std::vector<Check> chosen;
    for (const Check& check : validate::allChecks()) {
        const bool named = std::string_view(check.name).find(options.filter) != std::string::npos;
        if (named && check.level <= level) chosen.push_back(check);
    }
    if (chosen.empty())
        failUsage("no check up to level {} has \"{}\" in its name; see --list", level,
                  options.filter);
    return chosen;
}

Json describe(const Check& check) {
    return {{"name", check.name}, {"level", check.level}, {"asserts", check.sentence}};
}

void printList(const std::vector<Check>& checks, bool json) {
    Json all = Json::array();
    for (const Check& check : checks) {
        if (json)
            all.push_back(describe(check));
        else
            print("{:>2}  {:26} {}\n", check.level, check.name, check.sentence);
    }
    if (json) print("{}\n", all.dump(2));
}

// One line a check; findings after the first stand below it.
void printResult(const Check& check, const CheckResult& result) {
    if (isatty(STDOUT_FILENO) != 0) print("\x1b[K");
    print("{} {:26} {:6.2f} s", result.passed() ? "ok  " : "FAIL", check.name, result.seconds);
    const auto& words = result.passed() ? result.notes : result.findings;
    for (std::size_t i = 0; i < words.size(); ++i) {
        print("{}{}", i == 0 ? "  " : result.passed() ? ", " : "\n     ", words[i]);
    }
    print("\n");
    (void)flushOutput();
}

// On a terminal, until the result stands in its place. Some checks take minutes.
void sayRunning(const Check& check) {
    if (isatty(STDERR_FILENO) == 0 || isatty(STDOUT_FILENO) == 0) return;
    const std::time_t now = std::time(nullptr);
    say("     {:26} since {:%H:%M:%S}\r", check.name, fmt::localtime(now));
}

CheckResult run(const Check& check, const validate::Subject& subject) {
    try {
        return validate::runCheck(check, subject);
    } catch (const std::runtime_error& error) {
        throw Failure(Exit::kEffect, error.what());
    }
}

int runChecks(const ValidateOptions& options, const std::vector<Check>& checks) {
    Json all = Json::array();
    std::size_t failed = 0;
    for (const Check& check : checks) {
        sayRunning(check);
        const CheckResult result = run(check, options.subject);
        failed += !result.passed();
        if (!options.json) {
            printResult(check, result);
            continue;
        }
        Json entry = describe(check);
        entry["passed"] = result.passed();
        entry["seconds"] = result.seconds;
        entry["findings"] = result.findings;
        entry["notes"] = result.notes;
        all.push_back(std::move(entry));
    }
    if (options.json)
        print("{}\n", all.dump(2, ' ', false, Json::error_handler_t::replace));
    else
        print("{} checks, {} failed, seed {}\n", checks.size(), failed, options.subject.seed);
    return failed == 0 ? 0 : 1;
}

int validateModule(ValidateOptions& options) {
    const auto checks = chosenChecks(options);
    if (options.list) {
        printList(checks, options.json);
        return 0;
    }
    options.subject.modulePath = locateModule(options.module);
    return runChecks(options, checks);
}

}  // namespace

void addValidateCommand(CLI::App& program, int& result) {
    CLI::App* command = program.add_subcommand(
        "validate", "Check an effect module with a host that distrusts it;\nends with 0 or 1");
    const auto options = std::make_shared<ValidateOptions>();
    command
        ->add_option("MODULE", options->module,
                     "The effect module; else the one that came with this program")
        ->type_name("");
    command->add_option("--level", options->level, "From 1, at once, to 10, all there is [5]")
        ->type_name("N")
        ->check(CLI::Range(1, validate::kHighestLevel));
    command->add_option("--filter", options->filter, "Only checks with this text in their name")
        ->type_name("TEXT");
    command->add_option("--seed", options->subject.seed, "Seed of everything random")
        ->type_name("N")
        ->capture_default_str();
    command->add_option("--frames", options->subject.soakFrames, "Frames of \"soak.long\"")
        ->type_name("N")
        ->check(CLI::PositiveNumber)
        ->capture_default_str();
    command
        ->add_option("--patience", options->subject.patience,
                     "Multiplies the time limits, for slow builds")
        ->type_name("X")
        ->check(CLI::PositiveNumber)
        ->capture_default_str();
    command->add_flag("--list", options->list, "List the checks and run none");
    command->add_flag("--json", options->json, "As JSON");
    command->callback([options, &result] { result = validateModule(*options); });
}

}  // namespace tool
