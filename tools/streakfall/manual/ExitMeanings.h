// What the program's exit codes mean, for --help and the manual page.
#pragma once

#include <string>

namespace tool {

struct ExitMeaning {
    const char* code;
    const char* meaning;
};

inline constexpr ExitMeaning kExitMeanings[] = {
    {"0", "done: all frames written or validly skipped"},
    {"1", "some frames failed, a check failed, or a question was answered with no"},
    {"2", "usage: the same line will never work"},
    {"3", "input: none could be read"},
    {"4", "output: a file could not be written, and the run stopped there"},
    {"5", "the effect or its host, likewise"},
    {"128 + N", "ended by signal N"},
};

// A paragraph of a command's footer. The manual page has it in a section of its own.
inline constexpr char kExitHeading[] = "Exit codes:\n";
[[nodiscard]] std::string exitCodesText();

}  // namespace tool
