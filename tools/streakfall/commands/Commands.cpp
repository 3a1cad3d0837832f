#include "Commands.h"

namespace tool {

namespace {

// In the order of --help.
constexpr void (*kCommands[])(CLI::App& program, int& result) = {
    addRenderCommand,   addParamsCommand,   addExplainCommand, addLooksCommand,
    addSheetCommand,    addDefaultsCommand, addAboutCommand,   addPanelCommand,
    addValidateCommand, addReportCommand,   addManualCommand,
};

}  // namespace

void addCommands(CLI::App& program, int& result) {
    for (const auto add : kCommands) add(program, result);
}

}  // namespace tool
