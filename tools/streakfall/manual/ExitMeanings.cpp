#include "ExitMeanings.h"

#include <fmt/format.h>

namespace tool {

std::string exitCodesText() {
    std::string text = kExitHeading;
    for (const ExitMeaning& exit : kExitMeanings)
        text += fmt::format("  {:8} {}\n", exit.code, exit.meaning);
    text.pop_back();
    return text;
}

}  // namespace tool
