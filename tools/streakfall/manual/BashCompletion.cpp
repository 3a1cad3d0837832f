#include <fmt/format.h>

#include "Completion.h"

namespace tool {

namespace {

// bash parts words at "=", "@" and ":" unless they are quoted, and replaces only the last part.
constexpr char kScript[] = R"bash(# Completion of streakfall(1) for bash.

_streakfall_controls=(@CONTROLS@)
_streakfall_settings=(@SETTINGS@)
_streakfall_keys=(@KEYS@)
_streakfall_looks=(@LOOKS@)
_streakfall_compressions=(@COMPRESSIONS@)

# The options, parts and positional arguments of a command, into `words` and `files`.
_streakfall_command() {
    case $1 in
@COMMANDS@
    esac
}

# What an option of a command takes, into `words` and `files`; fails for a flag.
_streakfall_value() {
    case "$1 $2" in
@VALUES@
        *) return 1 ;;
    esac
}

_streakfall() {
    local word=${COMP_WORDS[COMP_CWORD]} at=$COMP_CWORD
    while ((at > 1)) && [[ $word == [=:@]* || ${COMP_WORDS[at - 1]} == [=:@] ]]; do
        at=$((at - 1))
        word=${COMP_WORDS[at]}$word
    done
    local previous=${COMP_WORDS[at - 1]} command=""
    ((at < 2)) || command=${COMP_WORDS[1]}
    [[ " @PARTED@ " != *" $command "* ]] || ((at < 3)) || command+=" ${COMP_WORDS[2]}"

    [[ $word != --*=* ]] || previous=${word%%=*} word=${word#*=}
    local quote=""
    [[ $word != [\"\']* ]] || quote=${word:0:1} word=${word:1}
    [[ -n $quote ]] || word=${word//\\/}

    local words=() files=""
    _streakfall_value "$command" "$previous" || _streakfall_command "$command"

    # What is on the line before the part that bash replaces, and stays there.
    local stays=""
    [[ -n $quote ]] || stays=${word%"${word##*[=:@]}"}
    local candidate
    COMPREPLY=()
    for candidate in "${words[@]}"; do
        [[ $candidate == "$word"* ]] || continue
        [[ $candidate != *[=@] ]] || compopt -o nospace
        candidate=${candidate#"$stays"}
        [[ -n $quote ]] || candidate=${candidate// /\\ }
        COMPREPLY+=("$candidate")
    done
    if [[ -n $files ]]; then
        compopt -o filenames
        while IFS= read -r candidate; do
            COMPREPLY+=("$candidate")
        done < <(compgen -A "$files" -- "$word")
    fi
}

complete -F _streakfall streakfall
)bash";

// What is offered, as assignments.
std::string offerOf(const OptionInfo& option) {
    switch (option.takes()) {
        case Takes::kNothing:
        case Takes::kAnything:
            return "";
        case Takes::kWords:
            return fmt::format("words=({})", quotedAll(shellQuoted, option.words()));
        case Takes::kFile:
            return "files=file";
        case Takes::kFolder:
            return "files=directory";
        case Takes::kLookOrFile:
            return "words=(\"${_streakfall_looks[@]}\") files=file";
        default:
            return fmt::format("words=(\"${{_streakfall_{}[@]}}\")", listOf(option.takes()));
    }
}

std::string commandCase(const CommandInfo& command) {
    std::vector<std::string> words;
    for (const CommandInfo::Part& part : command.parts) words.push_back(part.word);
    std::string offers;
    for (const OptionInfo& option : command.options) {
        if (!option.positional) words.push_back(option.names.back());
        if (option.positional && !offerOf(option).empty()) offers += "; " + offerOf(option);
    }
    // An argument that stands for itself is offered where no option was begun.
    std::string line = fmt::format("words=({})", quotedAll(shellQuoted, words));
    if (!offers.empty()) line += "; [[ $word == -* ]] || {" + offers.substr(1) + "; }";
    return fmt::format("        {}) {} ;;\n", shellQuoted(command.name), line);
}

std::string valueCases(const CommandInfo& command) {
    std::string cases;
    for (const OptionInfo& option : command.options) {
        if (option.positional || option.takes() == Takes::kNothing) continue;
        std::string patterns;
        for (const std::string& name : option.names)
            patterns += (patterns.empty() ? "" : " | ") + shellQuoted(command.name + " " + name);
        cases += fmt::format("        {}) {} ;;\n", patterns, offerOf(option));
    }
    return cases;
}

std::string withoutLineEnd(std::string text) {
    if (!text.empty()) text.pop_back();
    return text;
}

}  // namespace

std::string bashCompletion(const ManualSource& source) {
    std::string commands, values;
    for (const CommandInfo& command : source.commands) {
        commands += commandCase(command);
        values += valueCases(command);
    }
    return filledIn(kScript, source, shellQuoted,
                    {{"COMMANDS", withoutLineEnd(commands)}, {"VALUES", withoutLineEnd(values)}});
}

}  // namespace tool
