#include "CommandTree.h"

#include <algorithm>
#include <map>

#include "Text.h"

namespace tool {

namespace {

// A help text is broken into lines for the terminal.
std::string oneParagraph(std::string text) {
    std::replace(text.begin(), text.end(), '\n', ' ');
    return text;
}

// The library writes what it checks behind the form: "N:INT in [1 - 10]".
std::string plainForm(const std::string& form) {
    for (std::size_t at = form.find(':'); at != std::string::npos; at = form.find(':', at + 1))
        if (at > 0 && form[at - 1] != '[') return form.substr(0, at);
    return form;
}

OptionInfo infoOf(const CLI::Option& option) {
    OptionInfo info;
    for (const std::string& name : option.get_snames()) info.names.push_back("-" + name);
    for (const std::string& name : option.get_lnames()) info.names.push_back("--" + name);
    info.positional = info.names.empty();
    if (info.positional) info.names.push_back(option.get_name(true));
    const bool flag = option.get_items_expected_max() == 0;
    if (!flag) info.form = plainForm(option.get_type_name());
    if (!flag && info.form.empty()) info.form = info.names[0];
    info.standard = option.get_default_str();
    info.group = option.get_group();
    info.help = oneParagraph(option.get_description());
    info.required = option.get_required();
    info.repeated = !flag && option.get_expected_max() > 1;
    return info;
}

void collect(const CLI::App& app, const std::string& name, std::vector<CommandInfo>& all) {
    CommandInfo info{name, oneParagraph(app.get_description()), app.get_footer(), {}, {}};
    for (const CLI::Option* option : app.get_options())
        if (!option->get_group().empty()) info.options.push_back(infoOf(*option));
    const auto parts = app.get_subcommands([](const CLI::App*) { return true; });
    for (const CLI::App* part : parts)
        info.parts.push_back({part->get_name(), oneParagraph(part->get_description())});
    all.push_back(std::move(info));
    for (const CLI::App* part : parts)
        collect(*part, name.empty() ? part->get_name() : name + " " + part->get_name(), all);
}

}  // namespace

Takes OptionInfo::takes() const {
    static const std::map<std::string, Takes> kByForm = {
        {"", Takes::kNothing},
        {"FILE", Takes::kFile},
        {"PATTERN", Takes::kFile},
        {"MODULE", Takes::kFile},
        {"FOLDER", Takes::kFolder},
        {"LOOK", Takes::kLook},
        {"NAME|FILE", Takes::kLookOrFile},
        {"CONTROL", Takes::kControl},
        {"NAME=VALUE", Takes::kSetting},
        {"NAME=VALUES", Takes::kSetting},
        {"NAME@FRAME=VALUE,...", Takes::kKeys},
        {"NAME[:LEVEL]", Takes::kCompression},
    };
    if (const auto found = kByForm.find(form); found != kByForm.end()) return found->second;
    return words().size() > 1 ? Takes::kWords : Takes::kAnything;
}

std::vector<std::string> OptionInfo::words() const {
    std::vector<std::string> words;
    for (const std::string_view word : split(form, '|')) words.emplace_back(word);
    return words;
}

std::string CommandInfo::synopsis() const {
    std::string text = name;
    const auto add = [&](const std::string& part) { text += (text.empty() ? "" : " ") + part; };
    bool optional = false;
    for (const OptionInfo& option : options) {
        optional = optional || (!option.required && !option.positional);
        if (option.required) add(option.names[0] + " " + option.form);
    }
    if (optional) add("[OPTION...]");
    for (const OptionInfo& option : options)
        if (option.positional) add("[" + option.form + (option.repeated ? "...]" : "]"));
    if (!parts.empty()) add("COMMAND");
    return text;
}

std::vector<CommandInfo> commandsOf(const CLI::App& program) {
    std::vector<CommandInfo> all;
    collect(program, "", all);
    return all;
}

}  // namespace tool
