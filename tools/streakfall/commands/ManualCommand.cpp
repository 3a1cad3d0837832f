#include <memory>

#include "Commands.h"
#include "Commit.h"
#include "EffectSession.h"
#include "Manual.h"
#include "Say.h"
#include "ValueOptions.h"

namespace tool {

namespace {

struct ManualOptions {
    std::string form = "man";
    std::string module;
};

struct Form {
    const char* name;
    std::string (*text)(const ManualSource& source);
};

constexpr Form kForms[] = {{"man", manualPage},
                           {"bash", bashCompletion},
                           {"zsh", zshCompletion},
                           {"fish", fishCompletion}};

int printManual(const CLI::App& program, const ManualOptions& options) {
    EffectSession session(options.module, Defaults::kOwn);
    const ManualSource source{commandsOf(program), session.host().params(),
                              "Streakfall " STREAKFALL_VERSION, kCommitDate};
    for (const Form& form : kForms)
        if (options.form == form.name) print("{}", form.text(source));
    return 0;
}

}  // namespace

void addManualCommand(CLI::App& program, int& result) {
    CLI::App* command = program.add_subcommand(
        "manual", "Print the manual page, or what makes a shell complete this\nprogram's lines");
    const auto options = std::make_shared<ManualOptions>();
    command->add_option("FORM", options->form, "The page for man(1), or a shell's completion")
        ->type_name("man|bash|zsh|fish")
        ->check(CLI::IsMember({"man", "bash", "zsh", "fish"}).description(""))
        ->capture_default_str();
    addModuleOption(*command, options->module);
    command->footer(
        "Where they are not installed:\n"
        "  streakfall manual | man -l -\n"
        "  source <(streakfall manual bash)\n"
        "  streakfall manual zsh >~/.zfunc/_streakfall\n"
        "  streakfall manual fish >~/.config/fish/completions/streakfall.fish");
    command->callback([options, &program, &result] { result = printManual(program, *options); });
}

}  // namespace tool
