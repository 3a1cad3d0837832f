// Files of the project that the program carries inside itself, made into text when it is built.
#pragma once

#include <span>
#include <string_view>

namespace tool {

struct EmbeddedText {
    std::string_view name;  // of the file, without folder and ending
    std::string_view text;
};

// words/params.json
[[nodiscard]] std::string_view paramWordsText();

// looks/*.json, by name.
[[nodiscard]] std::span<const EmbeddedText> lookTexts();

}  // namespace tool
