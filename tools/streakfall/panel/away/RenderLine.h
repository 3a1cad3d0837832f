// The line of the command line that renders a page's values into files.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "Studio.h"

namespace tool::panel {

// "lines.####.png": after the input's own name, and in its format where the program writes it.
[[nodiscard]] std::string outputName(const StudioOptions& options);

// The arguments behind the program's name. Every value that is not the effect's own default stands
// in them, so that nothing that is stored or shipped elsewhere has a say. Throws Failure (usage).
[[nodiscard]] std::vector<std::string> renderArguments(Studio& studio, const Values& values,
                                                       const std::string& output,
                                                       std::array<int, 2> frames);

// "streakfall" with the arguments, quoted for a POSIX shell.
[[nodiscard]] std::string shellLine(const std::vector<std::string>& arguments);

}  // namespace tool::panel
