// The texts that the user sees outside the parameter panel, in Japanese and English, and the rule
// that picks the language.
//
// Japanese stands in Shift-JIS, code page 932, as the dialog's texts go through the system's
// narrow functions. The command line is read at the first question in a process.
#pragma once

#include <cstdint>
#include <string_view>

namespace streakfall {

enum TextKey : std::int32_t {
    kTextRights = 1,
    kTextSettings = 3,
    kTextStoreDefaults = 5,
    kTextRestoreDefaults = 6,
};

// "-" for a key without a text.
const char* lookupText(std::int32_t key);

bool useEnglish();

// The two steps of useEnglish, which keep nothing.

// The language switch of a command line: its word's letters, in capitals, packed into a number
// with the last letter lowest; 0 without a switch. The switch is "-L", in capitals or not, behind
// a blank and outside double quotes, with the word behind it; the last one counts.
std::uint32_t parseLanguageCode(std::string_view commandLine);

// The switch goes before the code page: "JP" is Japanese and any other word English; without one,
// code page 932 is Japanese.
bool isEnglish(std::uint32_t code, unsigned codePage);

}  // namespace streakfall
