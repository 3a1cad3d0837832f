#include "Words.h"

#include <array>
#include <cstdlib>
#include <map>
#include <nlohmann/json.hpp>

#include "EmbeddedTexts.h"

namespace tool {

namespace {

using Json = nlohmann::json;

struct Entry {
    std::array<ControlWords, 2> words;  // by Language
    Fit fit = Fit::kStays;
};

ControlWords readWords(const Json& entry, Language language) {
    const Json& texts = entry.at(std::string(languageCode(language)));
    return {texts.at("what"), texts.at("unit"), texts.at("with"), texts.at("hint")};
}

Fit readFit(const std::string& name) {
    if (name == "length") return Fit::kLength;
    if (name == "density") return Fit::kDensity;
    return name == "share" ? Fit::kShare : Fit::kStays;
}

WordLabels readLabels(const Json& labels, Language language) {
    const Json& texts = labels.at(std::string(languageCode(language)));
    return {texts.at("unit"),    texts.at("range"), texts.at("slider"),
            texts.at("default"), texts.at("with"),  texts.at("hint")};
}

struct WordsFile {
    std::map<int, Entry> params;  // by id
    std::array<WordLabels, 2> labels;
};

// Read once; nothing changes it later.
const WordsFile& wordsFile() {
    static const WordsFile file = [] {
        const Json json = Json::parse(paramWordsText());
        WordsFile read;
        for (const auto& [id, entry] : json.at("params").items())
            read.params[std::stoi(id)] = {
                {readWords(entry, Language::kEnglish), readWords(entry, Language::kJapanese)},
                readFit(entry.value("fit", ""))};
        read.labels = {readLabels(json.at("labels"), Language::kEnglish),
                       readLabels(json.at("labels"), Language::kJapanese)};
        return read;
    }();
    return file;
}

}  // namespace

std::string_view languageCode(Language language) {
    return language == Language::kJapanese ? "ja" : "en";
}

Language chooseLanguage(std::string_view given) {
    std::string_view code = given;
    // In the order in which the C library looks at them.
    for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const char* locale = std::getenv(variable);
        if (code.empty() && locale != nullptr) code = locale;
    }
    return code.starts_with("ja") ? Language::kJapanese : Language::kEnglish;
}

const WordLabels& labelsOf(Language language) {
    return wordsFile().labels[static_cast<std::size_t>(language)];
}

const ControlWords* wordsOf(int id, Language language) {
    const auto found = wordsFile().params.find(id);
    if (found == wordsFile().params.end()) return nullptr;
    return &found->second.words[static_cast<std::size_t>(language)];
}

nlohmann::ordered_json wordsJson(int id) {
    nlohmann::ordered_json both;
    for (const Language language : {Language::kEnglish, Language::kJapanese})
        if (const ControlWords* words = wordsOf(id, language))
            both[std::string(languageCode(language))] = {{"what", words->what},
                                                         {"unit", words->unit},
                                                         {"with", words->with},
                                                         {"hint", words->hint}};
    return both;
}

Fit fitOf(int id) {
    const auto found = wordsFile().params.find(id);
    return found == wordsFile().params.end() ? Fit::kStays : found->second.fit;
}

}  // namespace tool
