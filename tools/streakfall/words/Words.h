// What each control does to the picture, in plain words: params.json, the one place that says it,
// by the parameter's fixed id.
#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>

namespace tool {

enum class Language { kEnglish, kJapanese };

// "en" or "ja".
[[nodiscard]] std::string_view languageCode(Language language);

// The one of --lang, "en" or "ja"; when it is empty that of the locale, English for all others.
[[nodiscard]] Language chooseLanguage(std::string_view given);

// Texts in UTF-8; all but `what` may be empty.
struct ControlWords {
    std::string what;  // one sentence: what it does to the picture
    std::string unit;
    std::string with;  // what it works with or against
    std::string hint;  // how it is used
};

// What those texts and a control's range are headed with.
struct WordLabels {
    std::string unit, range, slider, standard, with, hint;
};

[[nodiscard]] const WordLabels& labelsOf(Language language);

// Null for an id without words: the ends of groups have no name and none of these.
[[nodiscard]] const ControlWords* wordsOf(int id, Language language);

// Those of both languages, as {"en": {"what": ...}, "ja": ...}; null for an id without words.
[[nodiscard]] nlohmann::ordered_json wordsJson(int id);

// How a value follows when a look that was made for one frame is used on another, whose sides are
// k times as long.
enum class Fit {
    kStays,    // switches, percents of something that is fitted itself, colours, seeds
    kLength,   // pixels: times k
    kDensity,  // lines per 1000 pixels: divided by k
    kShare,    // percent of the density that stands for a number of lines: times k
};

[[nodiscard]] Fit fitOf(int id);

}  // namespace tool
