#include <cstdlib>
#include <memory>

#include "Commands.h"
#include "EffectSession.h"
#include "EffectText.h"
#include "Failure.h"
#include "Say.h"
#include "ValueOptions.h"

namespace tool {

namespace {

struct AboutOptions {
    std::string module;
    std::string language;
    bool build = false;
};

int showAbout(const AboutOptions& options) {
    askForLanguage(options.language);
    if (options.build) setenv("STREAKFALL_SHIFT", "1", 1);
    EffectSession session(options.module, Defaults::kStored);
    std::string text;
    try {
        text = session.host().about();
    } catch (const std::runtime_error& error) {
        throw Failure(Exit::kEffect, error.what());
    }
    print("{}\n", shownText(text));
    return 0;
}

}  // namespace

void addAboutCommand(CLI::App& program, int& result) {
    CLI::App* command = program.add_subcommand("about", "Print the effect's about text");
    const auto options = std::make_shared<AboutOptions>();
    addModuleOption(*command, options->module);
    addLanguageOption(*command, options->language);
    command->add_flag("--build", options->build,
                      "The long form, with stage and build, as with the Shift key held");
    command->callback([options, &result] { result = showAbout(*options); });
}

}  // namespace tool
