// The options that several commands share: the module, and values of parameters.
#pragma once

#include <CLI/CLI.hpp>

#include "ParamArguments.h"

namespace tool {

void addModuleOption(CLI::App& command, std::string& path);

// --params and --set, and --key where time plays a part.
void addValueOptions(CLI::App& command, ParamTexts& texts, bool overTime);

}  // namespace tool
