// What the completions of the shells share.
#pragma once

#include <string>
#include <vector>

#include "Manual.h"

namespace tool {

// A text in quotes, as a shell reads it.
using Quote = std::string (*)(const std::string& text);

// For bash and zsh.
[[nodiscard]] std::string shellQuoted(const std::string& text);

// Each in quotes, with blanks between.
[[nodiscard]] std::string quotedAll(Quote quote, const std::vector<std::string>& texts);

// Of a list that all scripts have under one name, "settings" and the like, that name; else empty.
[[nodiscard]] std::string listOf(Takes takes);

// The head of a help text: what stands before its first aside.
[[nodiscard]] std::string headOf(const std::string& help);

// Of each @NAME@ in `text` what stands for it; the lists, and the commands with parts, by
// themselves.
[[nodiscard]] std::string filledIn(std::string text, const ManualSource& source, Quote quote,
                                   const std::vector<std::pair<std::string, std::string>>& values);

}  // namespace tool
