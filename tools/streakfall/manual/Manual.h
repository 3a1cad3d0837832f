// What a system wants to know of a program beside the program: the manual page, and the completions
// of three shells. Each is one text, made from the same description.
#pragma once

#include <string>
#include <vector>

#include "CommandTree.h"
#include "host/ParamInfo.h"

namespace tool {

struct ManualSource {
    std::vector<CommandInfo> commands;
    std::vector<standin::ParamInfo> controls;  // in the host's order, groups too
    std::string program;                       // "Streakfall 1.5.2"
    std::string date;                          // "2026-11-23"; may be empty

    // By name, in the order of their list; only what a completion offers.
    [[nodiscard]] std::vector<std::string> controlNames() const;
    [[nodiscard]] std::vector<std::string> looks() const;
    [[nodiscard]] std::vector<std::string> compressions() const;
    // "Taper=" and, of a switch, "Repeat=on" and "Repeat=off".
    [[nodiscard]] std::vector<std::string> settings() const;
    // "Taper@".
    [[nodiscard]] std::vector<std::string> keys() const;
};

// For man(1), in the macros of man(7).
[[nodiscard]] std::string manualPage(const ManualSource& source);

[[nodiscard]] std::string bashCompletion(const ManualSource& source);
[[nodiscard]] std::string zshCompletion(const ManualSource& source);
[[nodiscard]] std::string fishCompletion(const ManualSource& source);

}  // namespace tool
