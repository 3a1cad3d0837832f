// The effect's own texts: which language it is asked for, and how they are shown.
#pragma once

#include <string>
#include <string_view>

namespace tool {

// The effect takes its language from a switch on its host's command line, and settles it at the
// first question in a process: to be called before the effect is loaded. An empty language leaves
// the choice to the effect.
void askForLanguage(const std::string& language);

// A text of the effect, which is in the code page it is made for (932) with carriage returns as
// line ends, as UTF-8 with line feeds.
[[nodiscard]] std::string shownText(std::string_view text);

}  // namespace tool
