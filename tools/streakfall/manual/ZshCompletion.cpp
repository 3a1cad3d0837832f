#include <fmt/format.h>

#include "Completion.h"

namespace tool {

namespace {

constexpr char kScript[] = R"zsh(#compdef streakfall
# Completion of streakfall(1) for zsh.

# A name in front of a value: no blank behind it.
_streakfall_open() {
    local -a open whole
    open=(${@:#*[^=@]}) whole=(${@:#*[=@]})
    compadd -q -S '' -a open
    compadd -a whole
}
_streakfall_controls() { local -a names=(@CONTROLS@); compadd -a names }
_streakfall_settings() { _streakfall_open @SETTINGS@ }
_streakfall_keys() { _streakfall_open @KEYS@ }
_streakfall_looks() { local -a names=(@LOOKS@); compadd -a names }
_streakfall_looks_or_files() { _streakfall_looks; _files }
_streakfall_compressions() { local -a names=(@COMPRESSIONS@); compadd -a names }

_streakfall() {
    local context state line command=$words[2]
    local -a options commands named
    typeset -A opt_args
    ((CURRENT > 2)) || command=
    if [[ " @PARTED@ " == *" $command "* ]] && ((CURRENT > 3)); then command+=" $words[3]"; fi
    case $command in
@COMMANDS@
        *) return 1 ;;
    esac
    # The words of the command are not its arguments.
    named=(${=command})
    words=($words[1] "${words[@]:$(($#named + 1))}")
    ((CURRENT -= $#named))
    if ((${#commands})) && [[ $words[CURRENT] != -* ]]; then
        _describe command commands
    else
        _arguments -S : $options
    fi
}

_streakfall "$@"
)zsh";

std::string escaped(const std::string& text) {
    std::string result;
    for (const char c : text) {
        if (c == ':' || c == '[' || c == ']' || c == '\\') result += '\\';
        result += c;
    }
    return result;
}

std::string actionOf(const OptionInfo& option) {
    switch (option.takes()) {
        case Takes::kNothing:
            return "";
        case Takes::kAnything:
            return " ";
        case Takes::kWords:
            return fmt::format("({})", fmt::join(option.words(), " "));
        case Takes::kFile:
            return "_files";
        case Takes::kFolder:
            return "_files -/";
        case Takes::kLookOrFile:
            return "_streakfall_looks_or_files";
        default:
            return "_streakfall_" + listOf(option.takes());
    }
}

// One argument of _arguments for each name.
std::vector<std::string> specsOf(const OptionInfo& option) {
    const std::string value =
        option.form.empty() ? "" : ":" + escaped(option.form) + ":" + actionOf(option);
    if (option.positional) return {(option.repeated ? "*" : "") + value};
    std::string others;
    for (const std::string& name : option.names) others += (others.empty() ? "" : " ") + name;
    std::vector<std::string> specs;
    for (const std::string& name : option.names) {
        const bool word = name.starts_with("--") && !value.empty();
        specs.push_back((option.repeated ? "*" : "(" + others + ")") + name + (word ? "=" : "") +
                        "[" + escaped(headOf(option.help)) + "]" + value);
    }
    return specs;
}

std::string caseOf(const CommandInfo& command) {
    std::string text =
        fmt::format("        {})\n            options=(\n", shellQuoted(command.name));
    for (const OptionInfo& option : command.options)
        for (const std::string& spec : specsOf(option))
            text += fmt::format("                {}\n", shellQuoted(spec));
    text += "            )\n";
    if (!command.parts.empty()) text += "            commands=(\n";
    for (const CommandInfo::Part& part : command.parts)
        text += fmt::format("                {}\n",
                            shellQuoted(part.word + ":" + escaped(headOf(part.help))));
    if (!command.parts.empty()) text += "            )\n";
    return text + "            ;;";
}

}  // namespace

std::string zshCompletion(const ManualSource& source) {
    std::string commands;
    for (const CommandInfo& command : source.commands)
        commands += (commands.empty() ? "" : "\n") + caseOf(command);
    return filledIn(kScript, source, shellQuoted, {{"COMMANDS", commands}});
}

}  // namespace tool
