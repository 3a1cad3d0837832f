#include "Look.h"

#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>

#include "EmbeddedTexts.h"
#include "Failure.h"
#include "Text.h"
#include "TextFile.h"

namespace tool {

namespace {

using Json = nlohmann::ordered_json;

constexpr std::array kLanguages{Language::kEnglish, Language::kJapanese};

// What a user typed, and what a picture's metadata holds, need not be UTF-8, which JSON must be.
std::string jsonText(const Json& json, int indent = -1) {
    return json.dump(indent, ' ', false, Json::error_handler_t::replace);
}

std::array<std::string, 2> readTexts(const Json& object, const char* key) {
    std::array<std::string, 2> texts;
    if (!object.contains(key)) return texts;
    for (const Language language : kLanguages)
        texts[static_cast<std::size_t>(language)] =
            object.at(key).value(std::string(languageCode(language)), "");
    return texts;
}

Json textsJson(const std::array<std::string, 2>& texts) {
    return {{"en", texts[0]}, {"ja", texts[1]}};
}

standin::LayerSize readSize(const Json& size) {
    const bool good = size.is_array() && size.size() == 2 &&
                      std::all_of(size.begin(), size.end(), [](const Json& side) {
                          return side.is_number_integer() && side > 0 && side <= kPFMaxWorldSide;
                      });
    if (!good) failUsage("\"size\": {} is no frame; write [1920, 1080]", jsonText(size));
    return {size[0].get<A_long>(), size[1].get<A_long>()};
}

// The list that `params --json` prints: each entry's value or, where no values were given, its
// default. Groups have neither.
Json valuesOfList(const Json& list) {
    Json values = Json::object();
    for (const Json& entry : list) {
        if (!entry.is_object() || !entry.contains("name"))
            failUsage("a list that is not what \"params --json\" prints");
        const Json& value =
            entry.contains("value") ? entry["value"] : entry.value("default", Json());
        if (!value.is_null() && value != "") values[entry["name"].get<std::string>()] = value;
    }
    return values;
}

}  // namespace

Look parseLook(std::string_view key, std::string_view text) try {
    const Json json = Json::parse(text);
    Look look{std::string(key), {}, {}, std::nullopt, ""};
    if (json.is_array()) {
        look.values = jsonText(valuesOfList(json));
    } else if (!json.is_object()) {
        failUsage("{}: neither an object of values nor a list", key);
    } else if (!json.contains("values")) {
        look.values = text;
    } else {
        look.name = readTexts(json, "name");
        look.about = readTexts(json, "about");
        if (json.contains("size")) look.size = readSize(json["size"]);
        look.values = jsonText(json["values"]);
    }
    return look;
} catch (const Json::parse_error& error) {
    failUsage("{}: not JSON at byte {}", key, error.byte);
} catch (const Json::exception&) {
    failUsage("{}: \"name\" and \"about\" hold \"en\" and \"ja\", \"values\" names and values",
              key);
}

Look lookFromWords(std::string_view key, std::string_view words) {
    Json values = Json::object();
    for (const std::string_view setting : split(words, ';')) {
        const auto equals = setting.find('=');
        if (equals == std::string_view::npos)
            fail(Exit::kInput, "{}: \"{}\" is no setting", key, trimmed(setting));
        // A name may end in a blank, but none begins with one.
        std::string_view name = setting.substr(0, equals);
        name.remove_prefix(std::min(name.find_first_not_of(' '), name.size()));
        values[std::string(name)] = trimmed(setting.substr(equals + 1));
    }
    return {std::string(key), {}, {}, std::nullopt, jsonText(values)};
}

const std::vector<Look>& shippedLooks() {
    static const std::vector<Look> looks = [] {
        std::vector<Look> read;
        for (const EmbeddedText& file : lookTexts())
            read.push_back(parseLook(file.name, file.text));
        return read;
    }();
    return looks;
}

const Look* findShippedLook(std::string_view key) {
    const auto& looks = shippedLooks();
    const auto found =
        std::find_if(looks.begin(), looks.end(), [&](const Look& look) { return look.key == key; });
    return found == looks.end() ? nullptr : &*found;
}

Look loadLook(const std::string& keyOrPath) {
    if (const Look* shipped = findShippedLook(keyOrPath)) return *shipped;
    std::error_code ignored;
    if (!std::filesystem::exists(keyOrPath, ignored)) {
        std::vector<std::string> keys;
        for (const Look& look : shippedLooks()) keys.push_back(look.key);
        failUsage("there is neither a look nor a file \"{}\"; the nearest: {}", keyOrPath,
                  quotedList(nearestOf(keyOrPath, keys)));
    }
    return parseLook(keyOrPath, readTextFile("--look", keyOrPath));
}

std::string lookText(const Look& look) {
    Json json = Json::object();
    if (!look.name[0].empty()) json["name"] = textsJson(look.name);
    if (!look.about[0].empty()) json["about"] = textsJson(look.about);
    if (look.size) json["size"] = {look.size->width, look.size->height};
    json["values"] = Json::parse(look.values);
    return jsonText(json, 2) + "\n";
}

double fitted(double value, Fit fit, standin::LayerSize madeFor, standin::LayerSize layer) {
    const double ratio = std::min(static_cast<double>(layer.width) / madeFor.width,
                                  static_cast<double>(layer.height) / madeFor.height);
    switch (fit) {
        case Fit::kLength:
        case Fit::kShare:
            return value * ratio;
        case Fit::kDensity:
            return value / ratio;
        case Fit::kStays:
            break;
    }
    return value;
}

}  // namespace tool
