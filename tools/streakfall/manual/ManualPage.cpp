#include <fmt/format.h>

#include "ExitMeanings.h"
#include "Look.h"
#include "Manual.h"
#include "ParamText.h"
#include "Text.h"
#include "Words.h"

namespace tool {

namespace {

using standin::ParamInfo;

constexpr char kHead[] = R"(.SH NAME
streakfall \- draws comic\-style streak lines on pictures and sequences
.SH SYNOPSIS
)";

constexpr char kDescription[] = R"(.SH DESCRIPTION
.B streakfall
plays the host of the effect Q_Streakfall: it loads the effect's module, sets its controls, and has
it draw frame by frame, over the pictures of a sequence or over nothing.
A frame depends on its values and its number alone, so frames can be drawn in any order, on any
machine, and come out the same.
.PP
Files are written under a temporary name and renamed when they are whole.
)";

constexpr char kTail[] = R"(.SH ENVIRONMENT
.TP
.BR LC_ALL ", " LC_MESSAGES ", " LANG
Japanese texts where the locale begins with \(lqja\(rq, else English;
.B \-\-lang
goes before them.
.TP
.B STREAKFALL_ISA
.RB \(lq baseline \(rq
keeps the drawing from using AVX2. The pictures are the same.
.SH FILES
.TP
.I Q_Streakfall.so
The effect's module: beside the program, or where it was installed;
.B \-\-module
names another.
.TP
.I Q_Streakfall.ini
What
.B "defaults save"
stored.
.B "defaults show"
prints where it is.
)";

// A text that is no command of the formatter, whatever it holds.
std::string plain(std::string_view text) {
    std::string result;
    for (const char c : text) {
        if (c == '\\')
            result += "\\e";
        else if (c == '-')
            result += "\\-";
        else if (c == '^')
            result += "\\(ha";
        else if (c == '~')
            result += "\\(ti";
        else
            result += c;
    }
    if (result.starts_with('.') || result.starts_with('\'')) result.insert(0, "\\&");
    return result;
}

std::string bold(std::string_view text) { return "\\fB" + plain(text) + "\\fR"; }
std::string italic(std::string_view text) { return "\\fI" + plain(text) + "\\fR"; }

std::string synopsisOf(const CommandInfo& command) {
    std::string text = ".SY streakfall\n";
    const std::string synopsis = command.synopsis();
    for (const std::string_view word : split(synopsis, ' '))
        text += (word.starts_with('[') ? plain(word) : bold(word)) + "\n";
    return text + ".YS\n";
}

std::string optionText(const OptionInfo& option) {
    std::string head;
    for (const std::string& name : option.names)
        head += (head.empty() ? "" : ", ") + (option.positional ? italic(name) : bold(name));
    if (!option.positional && !option.form.empty()) head += " " + italic(option.form);
    std::string text = fmt::format(".TP\n{}\n{}.\n", head, plain(option.help));
    if (!option.standard.empty()) text += fmt::format("Default: {}.\n", plain(option.standard));
    if (option.required) text += "Must be given.\n";
    return text;
}

// Lines that are indented stay as they are, the others run on.
std::string footerText(const std::string& footer) {
    std::string text;
    bool example = false;
    for (const std::string_view line : split(footer, '\n')) {
        const bool indented = line.starts_with(' ');
        if (indented != example) text += indented ? ".PP\n.in +4n\n.EX\n" : ".EE\n.in\n.PP\n";
        example = indented;
        text += line.empty() ? ".PP\n" : plain(indented ? line.substr(2) : line) + "\n";
    }
    return text + (example ? ".EE\n.in\n" : "");
}

std::string commandText(const CommandInfo& command) {
    std::string text = command.name.empty() ? ".SH OPTIONS\n"
                                            : fmt::format(".SS \"streakfall {}\"\n{}.\n",
                                                          command.name, plain(command.help));
    std::string group;
    for (const OptionInfo& option : command.options) {
        if (!command.name.empty() && option.names.back() == "--help") continue;
        if (option.group != group && option.group != "Options" && option.group != "Positionals")
            text += fmt::format(".PP\n{}:\n", italic(option.group));
        group = option.group;
        text += optionText(option);
    }
    const std::string footer = command.footer.substr(0, command.footer.find(kExitHeading));
    if (!command.name.empty() && !footer.empty()) text += ".PP\n" + footerText(footer);
    return text;
}

std::string controlText(const ParamInfo& control) {
    const ControlWords* words = wordsOf(control.id, Language::kEnglish);
    if (words == nullptr) return "";
    const std::string name = (control.group.empty() ? "" : control.group + " > ") + control.name;
    std::string text =
        fmt::format(".TP\n{} ({})\n{}\n", bold(name), control.id, plain(words->what));
    if (hasRange(control))
        text += fmt::format("From {}{}; default {}.\n",
                            plain(rangeText(control.validMin, control.validMax)),
                            words->unit.empty() ? "" : " (" + plain(words->unit) + ")",
                            plain(defaultText(control)));
    else if (control.hasValue())
        text += fmt::format("Default {}.\n", plain(defaultText(control)));
    for (const std::string& sentence : {words->with, words->hint})
        if (!sentence.empty()) text += plain(sentence) + "\n";
    return text;
}

std::string looksText() {
    std::string text = ".SH LOOKS\nWhat ships; each is fitted to the frame.\n";
    for (const Look& look : shippedLooks())
        text += fmt::format(".TP\n{}\n{}\n", bold(look.key),
                            plain(look.about[static_cast<std::size_t>(Language::kEnglish)]));
    return text;
}

}  // namespace

std::string manualPage(const ManualSource& source) {
    std::string text = fmt::format(".TH STREAKFALL 1 \"{}\" \"{}\" \"User Commands\"\n",
                                   source.date, source.program);
    text += kHead;
    for (const CommandInfo& command : source.commands)
        if (command.parts.empty()) text += synopsisOf(command);
    text += kDescription;
    bool first = true;
    for (const CommandInfo& command : source.commands) {
        text += commandText(command);
        if (std::exchange(first, false)) text += ".SH COMMANDS\n";
    }
    text +=
        ".SH CONTROLS\nThe controls of the effect, by name and fixed id, as\n.B \\-\\-set\n"
        "takes them.\n";
    for (const ParamInfo& control : source.controls) text += controlText(control);
    text += looksText() + ".SH EXIT STATUS\n";
    for (const auto& [code, meaning] : kExitMeanings)
        text += fmt::format(".TP\n.B {}\n{}\n", code, plain(meaning));
    return text + kTail;
}

}  // namespace tool
