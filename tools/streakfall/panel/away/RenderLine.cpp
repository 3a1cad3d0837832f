#include "RenderLine.h"

#include <algorithm>
#include <cctype>
#include <filesystem>

#include "FilePattern.h"
#include "Text.h"

namespace tool::panel {

namespace {

using standin::ParamInfo;

// Without the letters that stand for a frame's number, and those that stood around them.
std::string plainStem(const std::string& pattern) {
    std::string stem = std::filesystem::path(pattern).stem().string();
    for (std::size_t at = stem.find('%'); at != std::string::npos; at = stem.find('%', at)) {
        std::size_t end = at + 1;
        while (end < stem.size() && std::isdigit(static_cast<unsigned char>(stem[end])) != 0) ++end;
        stem.erase(at, end < stem.size() && stem[end] == 'd' ? end + 1 - at : 1);
    }
    std::erase_if(stem, [](char c) { return c == '#' || c == '@' || c == '[' || c == ']'; });
    const auto last = stem.find_last_not_of("._- ");
    return last == std::string::npos ? "" : stem.substr(0, last + 1);
}

std::string keysText(const ParamInfo& param, const Setting& setting) {
    std::string text = param.name;
    char before = '@';
    for (const auto& [frame, key] : setting.keys) {
        if (before == ',') text += ',';
        text += fmt::format("@{}={}", frame, valueText(param, key.value));
        if (key.behind != standin::Way::line) text += fmt::format(":{}", wayName(key.behind));
        before = ',';
    }
    return text;
}

bool isPlain(const std::string& text) {
    return !text.empty() && std::all_of(text.begin(), text.end(), [](unsigned char c) {
        return c < 128 &&
               (std::isalnum(c) != 0 ||
                std::string_view("-_./=,:%+").find(static_cast<char>(c)) != std::string_view::npos);
    });
}

std::string quoted(const std::string& text) {
    if (isPlain(text)) return text;
    std::string result = "'";
    for (const char c : text) result += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return result + "'";
}

}  // namespace

std::string outputName(const StudioOptions& options) {
    if (options.input.empty()) return "lines.####.png";
    const std::string ending = lowered(std::filesystem::path(options.input).extension().string());
    const bool written =
        ending == ".png" || ending == ".tif" || ending == ".tiff" || ending == ".exr";
    const std::string stem = plainStem(options.input);
    return fmt::format("{}lines.####{}", stem.empty() ? "" : stem + "-", written ? ending : ".png");
}

std::vector<std::string> renderArguments(Studio& studio, const Values& values,
                                         const std::string& output, std::array<int, 2> frames) {
    const StudioOptions& options = studio.options();
    std::vector<std::string> line{"render"};
    const auto add = [&](const char* option, const std::string& text) {
        if (!text.empty()) line.insert(line.end(), {option, text});
    };
    add("-i", options.input);
    add("--layer", options.imageLayer);
    add("--size", options.input.empty() ? options.size : "");
    add("-o", output);
    add("-f", frames[0] == frames[1] ? fmt::format("{}", frames[0])
                                     : fmt::format("{}-{}", frames[0], frames[1]));
    add("--module", options.module);
    const Values own(studio.ownParams(), studio.layer());
    for (const ParamInfo& param : studio.params()) {
        if (!param.hasValue()) continue;
        const Setting& setting = values.of(param);
        if (!setting.keys.empty())
            add("--key", keysText(param, setting));
        else if (setting.constant != own.of(param).constant)
            add("--set", param.name + "=" + valueText(param, setting.constant));
    }
    return line;
}

std::string shellLine(const std::vector<std::string>& arguments) {
    std::string line = "streakfall";
    for (const std::string& argument : arguments) line += " " + quoted(argument);
    return line;
}

}  // namespace tool::panel
