// The options that several commands share: the module, its language, and values of parameters.
#pragma once

#include <CLI/CLI.hpp>

#include "ParamArguments.h"

namespace tool {

void addModuleOption(CLI::App& command, std::string& path);

// --lang, for askForLanguage.
void addLanguageOption(CLI::App& command, std::string& language);

// --look, --params and --set, and --key where time plays a part.
void addValueOptions(CLI::App& command, ParamTexts& texts, bool overTime);

}  // namespace tool
