// The program's commands. Each adds its options to the command line, and when it is the one that
// was called, does its work there and leaves the exit code in `result`; it throws Failure.
#pragma once

#include <CLI/CLI.hpp>

namespace tool {

void addRenderCommand(CLI::App& program, int& result);
void addParamsCommand(CLI::App& program, int& result);
void addDefaultsCommand(CLI::App& program, int& result);
void addAboutCommand(CLI::App& program, int& result);
void addValidateCommand(CLI::App& program, int& result);

}  // namespace tool
