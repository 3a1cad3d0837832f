#include "EffectText.h"

#include <iconv.h>

#include <algorithm>
#include <cstdlib>

namespace tool {

namespace {

constexpr char kCommandLineVariable[] = "STREAKFALL_COMMAND_LINE";

}  // namespace

void askForLanguage(const std::string& language) {
    if (language.empty()) return;
    const char* line = language == "ja" ? "streakfall -L JP" : "streakfall -L EN";
    setenv(kCommandLineVariable, line, 1);
}

std::string shownText(std::string_view text) {
    std::string from(text);
    std::string result(from.size() * 3, '\0');  // one byte becomes three at most
    char* in = from.data();
    char* out = result.data();
    std::size_t inLeft = from.size();
    std::size_t outLeft = result.size();
    const iconv_t converter = iconv_open("UTF-8", "CP932");
    const bool converted = converter != reinterpret_cast<iconv_t>(-1) &&
                           iconv(converter, &in, &inLeft, &out, &outLeft) == 0;
    if (converter != reinterpret_cast<iconv_t>(-1)) iconv_close(converter);
    if (converted)
        result.resize(result.size() - outLeft);
    else
        result = from;
    std::replace(result.begin(), result.end(), '\r', '\n');
    return result;
}

}  // namespace tool
