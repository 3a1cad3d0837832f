// The program's commands, one file each.
#pragma once

#include <CLI/CLI.hpp>

namespace tool {

// Adds all commands to the command line. The one that is called does its work while the line is
// parsed, and leaves the exit code in `result`; it throws Failure.
void addCommands(CLI::App& program, int& result);

void addRenderCommand(CLI::App& program, int& result);
void addParamsCommand(CLI::App& program, int& result);
void addExplainCommand(CLI::App& program, int& result);
void addLooksCommand(CLI::App& program, int& result);
void addSheetCommand(CLI::App& program, int& result);
void addDefaultsCommand(CLI::App& program, int& result);
void addAboutCommand(CLI::App& program, int& result);
void addPanelCommand(CLI::App& program, int& result);
void addValidateCommand(CLI::App& program, int& result);
void addReportCommand(CLI::App& program, int& result);
void addManualCommand(CLI::App& program, int& result);

}  // namespace tool
