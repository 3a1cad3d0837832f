#include <fmt/format.h>

#include "Completion.h"

namespace tool {

namespace {

constexpr char kScript[] = R"fish(# Completion of streakfall(1) for fish.

# Whether the words before the cursor that are no options begin with the command, and it is all
# that was named; "" before any.
function __streakfall_at
    set -l words (commandline -opc)[2..]
    set -l command $words[1]
    contains -- "$command" @PARTED@; and set -q words[2]; and set command "$command $words[2]"
    test "$command" = "$argv[1]"
end

function __streakfall_controls
    printf '%s\n' @CONTROLS@
end
function __streakfall_settings
    printf '%s\n' @SETTINGS@
end
function __streakfall_keys
    printf '%s\n' @KEYS@
end
function __streakfall_looks
    printf '%s\n' @LOOKS@
end
function __streakfall_compressions
    printf '%s\n' @COMPRESSIONS@
end

complete -c streakfall -f
@LINES@
)fish";

std::string fishQuoted(const std::string& text) {
    std::string result = "'";
    for (const char c : text) {
        if (c == '\'' || c == '\\') result += '\\';
        result += c;
    }
    return result + "'";
}

// The arguments of `complete` that say what an option takes.
std::string offerOf(const OptionInfo& option) {
    switch (option.takes()) {
        case Takes::kNothing:
            return "";
        case Takes::kAnything:
            return " -x";
        case Takes::kWords:
            return fmt::format(" -x -a '{}'", fmt::join(option.words(), " "));
        case Takes::kFile:
            return " -r -F";
        case Takes::kFolder:
            return " -x -a '(__fish_complete_directories)'";
        case Takes::kLookOrFile:
            return " -r -F -a '(__streakfall_looks)'";
        default:
            return fmt::format(" -x -a '(__streakfall_{})'", listOf(option.takes()));
    }
}

std::string lineOf(const std::string& condition, const OptionInfo& option) {
    std::string line = "complete -c streakfall -n " + condition;
    if (!option.positional)
        for (const std::string& name : option.names)
            line += name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1);
    line += offerOf(option);
    return line + " -d " + fishQuoted(headOf(option.help)) + "\n";
}

std::string linesOf(const CommandInfo& command) {
    const std::string condition = fishQuoted("__streakfall_at " + fishQuoted(command.name));
    std::string lines;
    for (const CommandInfo::Part& part : command.parts)
        lines += fmt::format("complete -c streakfall -n {} -a {} -d {}\n", condition, part.word,
                             fishQuoted(headOf(part.help)));
    for (const OptionInfo& option : command.options)
        if (!option.positional || option.takes() != Takes::kAnything)
            lines += lineOf(condition, option);
    return lines;
}

}  // namespace

std::string fishCompletion(const ManualSource& source) {
    std::string lines;
    for (const CommandInfo& command : source.commands) lines += linesOf(command);
    lines.pop_back();
    return filledIn(kScript, source, fishQuoted, {{"LINES", lines}});
}

}  // namespace tool
