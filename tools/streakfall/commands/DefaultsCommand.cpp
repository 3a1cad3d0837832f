#include <cmath>
#include <filesystem>
#include <iostream>
#include <memory>

#include "Commands.h"
#include "EffectSession.h"
#include "EffectText.h"
#include "Failure.h"
#include "Say.h"
#include "ValueOptions.h"

namespace tool {

namespace {

using standin::ParamInfo;

constexpr int kDeclined = 1;

struct DefaultsOptions {
    std::string module;
    std::string language;
    ParamTexts params;
    bool yes = false;
};

int showDefaults(const DefaultsOptions& options) {
    EffectSession session(options.module, Defaults::kStored);
    const std::string file = session.settingsFile();
    print("Settings file: {}{}\n", file,
          std::filesystem::exists(file) ? "" : " (not there: the effect's own defaults hold)");
    for (const ParamInfo& param : session.host().params())
        if (param.hasValue() && param.type != PF_Param_POINT)
            print("{:25} {}\n", param.name, valueText(param, param.defaultValue));
    return 0;
}

// The effect's options dialog, with this program as the user.
class Dialog {
  public:
    explicit Dialog(standin::Instance& instance) : instance_(instance) {}

    // Opens and closes it, to see what it shows.
    const StandinDialogWindow& look() {
        leaveBy(kStandinDialogClose);
        return instance_.host().dialog().seen;
    }

    void leaveBy(A_long control) {
        standin::DialogTalk& talk = instance_.host().dialog();
        const long before = talk.shown;
        talk.answer = control;
        if (const PF_Err code = instance_.openDialog(); code != PF_Err_NONE)
            fail(Exit::kEffect, "the options dialog answered with code {}", code);
        if (talk.shown == before) fail(Exit::kEffect, "the effect showed no options dialog");
    }

  private:
    standin::Instance& instance_;
};

bool confirmed(const std::string& file, const StandinDialogWindow& window,
               const StandinDialogControl& button, bool yes) {
    print("{} ({})\n", shownText(window.groupBox.text), file);
    if (yes) {
        print("  {}\n", shownText(button.text));
        return true;
    }
    print("  {}? [y/N] ", shownText(button.text));
    (void)flushOutput();
    std::string answer;
    std::getline(std::cin, answer);
    if (answer == "y" || answer == "Y" || answer == "yes") return true;
    print("Nothing changed.\n");
    return false;
}

// Points are never stored.
bool isStored(const ParamInfo& param) { return param.hasValue() && param.type != PF_Param_POINT; }

// The effect does not tell when its file could not be written, so ask it anew what its defaults
// are. A number goes through six decimals and single precision on its way.
void checkSaved(standin::Instance& instance, const std::string& file) {
    standin::Host fresh(instance.host().module(), instance.host().offer());
    if (const PF_Err code = fresh.start(); code != PF_Err_NONE)
        fail(Exit::kEffect, "the effect does not start again: code {}", code);
    for (const ParamInfo& param : fresh.params()) {
        if (!isStored(param)) continue;
        const standin::Value wanted = instance.value(param.id);
        for (std::size_t i = 0; i < wanted.part.size(); ++i) {
            const double difference = std::abs(wanted.part[i] - param.defaultValue.part[i]);
            if (difference > 1e-5 + 1e-6 * std::abs(wanted.part[i]))
                fail(Exit::kOutput, "cannot write {}: \"{}\" did not reach it", file, param.name);
        }
    }
}

int saveDefaults(const DefaultsOptions& options) {
    askForLanguage(options.language);
    EffectSession session(options.module, Defaults::kStored);
    const ParamArguments arguments = session.readArguments(options.params);
    for (const std::string& warning : arguments.warnings()) say("note: {}\n", warning);
    standin::Instance instance = session.makeInstance({});
    storeValues(instance, arguments, {});
    Dialog dialog(instance);
    const StandinDialogWindow& window = dialog.look();
    if (!confirmed(session.settingsFile(), window, window.firstButton, options.yes))
        return kDeclined;
    dialog.leaveBy(kStandinDialogFirstButton);
    checkSaved(instance, session.settingsFile());
    return 0;
}

int restoreDefaults(const DefaultsOptions& options) {
    askForLanguage(options.language);
    EffectSession session(options.module, Defaults::kStored);
    standin::Instance instance = session.makeInstance({});
    Dialog dialog(instance);
    const StandinDialogWindow& window = dialog.look();
    if (!confirmed(session.settingsFile(), window, window.secondButton, options.yes))
        return kDeclined;
    dialog.leaveBy(kStandinDialogSecondButton);
    if (std::filesystem::exists(session.settingsFile()))
        fail(Exit::kOutput, "cannot remove {}", session.settingsFile());
    return 0;
}

using Action = int (*)(const DefaultsOptions&);

CLI::App* addAction(CLI::App& command, const char* name, const char* help,
                    const std::shared_ptr<DefaultsOptions>& options, Action action, int& result) {
    CLI::App* part = command.add_subcommand(name, help);
    addModuleOption(*part, options->module);
    part->callback([options, action, &result] { result = action(*options); });
    return part;
}

void addDialogOptions(CLI::App& part, DefaultsOptions& options) {
    part.add_flag("--yes", options.yes, "Do not ask");
    addLanguageOption(part, options.language);
}

}  // namespace

void addDefaultsCommand(CLI::App& program, int& result) {
    CLI::App* command = program.add_subcommand(
        "defaults", "Show, save or restore the values that new instances open with");
    command->require_subcommand(1);
    const auto options = std::make_shared<DefaultsOptions>();
    addAction(*command, "show", "Print the defaults and the file they come from", options,
              showDefaults, result);
    CLI::App* save = addAction(
        *command, "save", "Make the values given, and the present ones for the rest, the\ndefaults",
        options, saveDefaults, result);
    addValueOptions(*save, options->params, false);
    addDialogOptions(*save, *options);
    CLI::App* restore = addAction(*command, "restore", "Bring the effect's own defaults back",
                                  options, restoreDefaults, result);
    addDialogOptions(*restore, *options);
}

}  // namespace tool
