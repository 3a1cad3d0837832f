// The program's commands and options as data, read from the command line's own description, so that
// the manual page and the completions have what --help has.
#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

namespace tool {

// What an option takes, by the form that its help shows.
enum class Takes {
    kNothing,
    kAnything,  // nothing that could be offered
    kWords,     // one of a few words: "auto|bar|plain"
    kFile,
    kFolder,
    kLook,         // the name of one that ships
    kLookOrFile,   // likewise, or a file
    kControl,      // a parameter or group by name
    kSetting,      // NAME=VALUE
    kKeys,         // NAME@FRAME=VALUE,...
    kCompression,  // NAME[:LEVEL]
};

struct OptionInfo {
    std::vector<std::string> names;  // "-i", "--input"; of a positional its one name, "MODULE"
    std::string form;                // "PATTERN"; empty for a flag
    std::string standard;            // the value without it; may be empty
    std::string group;               // its heading in --help
    std::string help;                // one paragraph
    bool positional = false;
    bool required = false;
    bool repeated = false;

    [[nodiscard]] Takes takes() const;
    // Of kWords.
    [[nodiscard]] std::vector<std::string> words() const;
};

struct CommandInfo {
    struct Part {
        std::string word;  // "save" of "defaults save"
        std::string help;
    };

    std::string name;  // "render", "defaults save"; the program's own is empty
    std::string help;  // one paragraph
    std::string footer;
    std::vector<OptionInfo> options;
    std::vector<Part> parts;  // the commands under it

    // "render -o PATTERN [OPTION...]".
    [[nodiscard]] std::string synopsis() const;
};

// In the order of --help, the program itself first and a command before its parts.
[[nodiscard]] std::vector<CommandInfo> commandsOf(const CLI::App& program);

}  // namespace tool
