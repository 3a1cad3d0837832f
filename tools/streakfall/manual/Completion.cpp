#include "Completion.h"

#include <fmt/format.h>

#include <algorithm>

namespace tool {

namespace {

std::string replaced(std::string text, const std::string& from, const std::string& to) {
    for (std::size_t at = text.find(from); at != std::string::npos;
         at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
    return text;
}

}  // namespace

std::string shellQuoted(const std::string& text) {
    return "'" + replaced(text, "'", "'\\''") + "'";
}

std::string quotedAll(Quote quote, const std::vector<std::string>& texts) {
    std::string joined;
    for (const std::string& text : texts) joined += (joined.empty() ? "" : " ") + quote(text);
    return joined;
}

std::string listOf(Takes takes) {
    switch (takes) {
        case Takes::kControl:
            return "controls";
        case Takes::kSetting:
            return "settings";
        case Takes::kKeys:
            return "keys";
        case Takes::kLook:
        case Takes::kLookOrFile:
            return "looks";
        case Takes::kCompression:
            return "compressions";
        default:
            return "";
    }
}

std::string headOf(const std::string& help) {
    std::size_t end = help.size();
    for (const char* aside : {"; ", ": ", ". ", " ("}) end = std::min(end, help.find(aside));
    return help.substr(0, end);
}

std::string filledIn(std::string text, const ManualSource& source, Quote quote,
                     const std::vector<std::pair<std::string, std::string>>& values) {
    for (const auto& [name, list] :
         {std::pair("CONTROLS", source.controlNames()), std::pair("SETTINGS", source.settings()),
          std::pair("KEYS", source.keys()), std::pair("LOOKS", source.looks()),
          std::pair("COMPRESSIONS", source.compressions())})
        text = replaced(text, fmt::format("@{}@", name), quotedAll(quote, list));
    std::string parted;
    for (const CommandInfo& command : source.commands)
        if (!command.name.empty() && !command.parts.empty())
            parted += (parted.empty() ? "" : " ") + command.name;
    text = replaced(text, "@PARTED@", parted);
    for (const auto& [name, value] : values)
        text = replaced(text, fmt::format("@{}@", name), value);
    return text;
}

}  // namespace tool
