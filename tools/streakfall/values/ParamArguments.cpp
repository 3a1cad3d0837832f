#include "ParamArguments.h"

#include "Failure.h"
#include "FrameList.h"
#include "JsonText.h"
#include "Text.h"
#include "TextFile.h"

namespace tool {

using standin::ParamInfo;

standin::Value valueOn(const ParamKeys& keys, const ParamKey& key, standin::LayerSize layer) {
    standin::Value value = key.value.on(layer);
    if (keys.madeFor)  // numbers alone are fitted, and a number is the first part
        value.part[0] = fitted(value.part[0], fitOf(keys.param->id), *keys.madeFor, layer);
    return value;
}

namespace {

using Json = nlohmann::ordered_json;

int parseKeyFrame(std::string_view text, std::string_view name) {
    const auto frame = parseInt(text);
    if (!frame || *frame < -kLastFrame || *frame > kLastFrame)
        failUsage("\"{}\": \"{}\" is no frame number for a key", name, text);
    return *frame;
}

// A value of a key with the way behind it: "200", "200:hold", "200:ease", "200:line".
ParamKey parseKey(const ParamInfo& param, std::string_view text) {
    std::string_view value = text;
    standin::Way behind = standin::Way::line;
    if (const auto colon = text.rfind(':'); colon != std::string_view::npos) {
        const std::string word = lowered(trimmed(text.substr(colon + 1)));
        value = text.substr(0, colon);
        if (word == "hold")
            behind = standin::Way::hold;
        else if (word == "ease")
            behind = standin::Way::ease;
        else if (word != "line")
            failUsage("\"{}\": \":{}\" is no way between keys; write :line, :hold or :ease",
                      param.name, word);
    }
    return {ParamValue(param, value), behind, std::string(trimmed(text))};
}

const char* suffixOf(standin::Way way) {
    return way == standin::Way::hold ? ":hold" : way == standin::Way::ease ? ":ease" : "";
}

// As it was written, but for what a look's size changes.
std::string textOn(const ParamKeys& keys, const ParamKey& key, standin::LayerSize layer) {
    if (!keys.madeFor || fitOf(keys.param->id) == Fit::kStays) return key.text;
    return valueText(*keys.param, valueOn(keys, key, layer)) + suffixOf(key.behind);
}

}  // namespace

ParamArguments::ParamArguments(const ParamLookup& lookup, std::string_view section,
                               const ParamTexts& texts)
    : lookup_(lookup), section_(section) {
    for (const std::string& look : texts.looks) addLook(loadLook(look));
    for (const Look& look : texts.readLooks) addLook(look);
    for (const std::string& path : texts.files) addFile(path);
    for (const std::string& text : texts.sets) addSet(text);
    for (const std::string& text : texts.keys) addKey(text);
}

std::vector<std::string> ParamArguments::warnings() const {
    std::vector<std::string> lines;
    for (const auto& [index, keys] : values_)
        for (const auto& [frame, key] : keys.byFrame)
            if (const auto warning = key.value.outOfRange(*keys.param)) lines.push_back(*warning);
    return lines;
}

void ParamArguments::addLook(const Look& look) {
    ParamArguments own(*this);
    own.values_.clear();
    own.addJson(look.values);
    for (auto& [index, keys] : own.values_) {
        keys.madeFor = look.size;
        values_.insert_or_assign(index, std::move(keys));
    }
}

Json ParamArguments::toJson(standin::LayerSize layer) const {
    Json object = Json::object();
    for (const auto& [index, keys] : values_) {
        Json& value = object[keys.param->name];
        if (!keys.keyed) value = textOn(keys, keys.byFrame.begin()->second, layer);
        for (const auto& [frame, key] : keys.byFrame)
            if (keys.keyed) value[std::to_string(frame)] = textOn(keys, key, layer);
    }
    return object;
}

void ParamArguments::addFile(const std::string& path) {
    const std::string text = readTextFile("--params", path);
    try {
        if (trimmed(text).starts_with('{') || text.starts_with("\xEF\xBB\xBF"))
            addJson(text);
        else
            addSettings(text);
    } catch (const Failure& failure) {
        throw Failure(failure.code(), fmt::format("{}: {}", path, failure.what()));
    }
}

void ParamArguments::addJson(const std::string& text) {
    const Json object = parseJson(text);
    if (!object.is_object()) failUsage("not a JSON object");
    for (const auto& [name, value] : object.items()) {
        const ParamInfo& param = lookup_.find(name);
        if (value.is_object())
            addJsonKeys(param, value);
        else
            setConstant(param, plainText(value, name));
    }
}

void ParamArguments::addJsonKeys(const ParamInfo& param, const Json& object) {
    if (object.empty()) failUsage("\"{}\": there are no keys", param.name);
    ParamKeys keys{&param, {}, true};
    for (const auto& [frame, value] : object.items())
        keys.byFrame.insert_or_assign(parseKeyFrame(frame, param.name),
                                      parseKey(param, plainText(value, param.name)));
    values_.insert_or_assign(param.index, std::move(keys));
}

// Lines "key=value" under "[section]". A colour has three keys, "Name.r" and so on, and its alpha
// counts for nothing.
void ParamArguments::addSettings(const std::string& text) {
    bool inSection = false;
    bool found = false;
    std::map<std::string, std::array<std::string, 3>> colours;
    for (std::string_view line : split(text, '\n')) {
        line = trimmed(line);
        if (line.starts_with('[') && line.ends_with(']')) {
            inSection = line.substr(1, line.size() - 2) == section_;
            found = found || inSection;
            continue;
        }
        const auto equals = line.find('=');
        if (!inSection || line.starts_with(';') || equals == std::string_view::npos) continue;
        const std::string_view key = trimmed(line.substr(0, equals));
        const std::string_view value = trimmed(line.substr(equals + 1));
        const std::size_t channel = key.size() > 2 && key[key.size() - 2] == '.'
                                        ? std::string_view("rgba").find(key.back())
                                        : std::string_view::npos;
        if (channel == std::string_view::npos)
            setConstant(lookup_.find(key), value);
        else if (channel < 3)
            colours[std::string(key.substr(0, key.size() - 2))][channel] = value;
    }
    for (const auto& [name, parts] : colours)
        setConstant(lookup_.find(name), fmt::format("{},{},{}", parts[0], parts[1], parts[2]));
    if (!found)
        fail(Exit::kUsage, "neither a JSON object nor a settings file with the section [{}]",
             section_);
}

void ParamArguments::addSet(std::string_view text) {
    const auto equals = text.find('=');
    if (equals == std::string_view::npos)
        failUsage("--set: \"{}\" has no \"=\"; write \"Name=value\"", text);
    setConstant(lookup_.find(text.substr(0, equals)), text.substr(equals + 1));
}

void ParamArguments::addKey(std::string_view text) {
    const auto at = text.find('@');
    if (at == std::string_view::npos)
        failUsage("--key: \"{}\" has no \"@\"; write \"Name@1=0,@24=200\"", text);
    const ParamInfo& param = lookup_.find(text.substr(0, at));
    ParamKeys& keys = values_[param.index];
    if (keyedHere_.insert(param.index).second) keys = {&param, {}, true};
    // Values may have commas of their own: only one in front of an "@" parts two keys.
    for (std::string_view part : split(text.substr(at + 1), '@')) {
        const auto equals = part.find('=');
        if (equals == std::string_view::npos)
            failUsage("--key: \"@{}\" has no \"=\"; write \"{}@1=0,@24=200\"", part, param.name);
        std::string_view value = trimmed(part.substr(equals + 1));
        if (value.ends_with(',')) value.remove_suffix(1);
        keys.byFrame.insert_or_assign(parseKeyFrame(part.substr(0, equals), param.name),
                                      parseKey(param, value));
    }
}

void ParamArguments::setConstant(const ParamInfo& param, std::string_view value) {
    ParamKeys keys{&param, {}, false};
    keys.byFrame.emplace(
        0, ParamKey{ParamValue(param, value), standin::Way::line, std::string(trimmed(value))});
    values_.insert_or_assign(param.index, std::move(keys));
}

}  // namespace tool
