#include <filesystem>
#include <iostream>
#include <memory>

#include "Commands.h"
#include "EffectSession.h"
#include "EffectText.h"
#include "Failure.h"
#include "OptionsDialog.h"
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

int saveDefaults(const DefaultsOptions& options) {
    askForLanguage(options.language);
    EffectSession session(options.module, Defaults::kStored);
    const ParamArguments arguments = session.readArguments(options.params);
    for (const std::string& warning : arguments.warnings()) say("note: {}\n", warning);
    standin::Instance instance = session.makeInstance({});
    storeValues(instance, arguments, {});
    OptionsDialog dialog(instance);
    const StandinDialogWindow& window = dialog.look();
    if (!confirmed(session.settingsFile(), window, window.firstButton, options.yes))
        return kDeclined;
    dialog.save(session.settingsFile());
    return 0;
}

int restoreDefaults(const DefaultsOptions& options) {
    askForLanguage(options.language);
    EffectSession session(options.module, Defaults::kStored);
    standin::Instance instance = session.makeInstance({});
    OptionsDialog dialog(instance);
    const StandinDialogWindow& window = dialog.look();
    if (!confirmed(session.settingsFile(), window, window.secondButton, options.yes))
        return kDeclined;
    dialog.restore(session.settingsFile());
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
