// The language switch of any command line. It can come from a shortcut that somebody else wrote.
#include <algorithm>
#include <string>

#include "Stage.h"
#include "params/Texts.h"

using namespace fuzz;
using streakfall::parseLanguageCode;

namespace {

constexpr std::uint32_t kJapanese = 'J' * 256 + 'P';

std::string lowered(std::string text) {
    for (char& c : text) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    }
    return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // In an allocation of its own size: a byte read behind it is seen.
    const std::vector<char> exact(data, data + size);
    const std::string text(exact.begin(), exact.end());
    const std::uint32_t code = parseLanguageCode({exact.data(), exact.size()});
    expect(code == parseLanguageCode(lowered(text)), "small letters make another code of ", text);
    expect(code == parseLanguageCode(text + " "), "a blank behind it makes another code of ", text);

    if (text.find('"') != text.npos) return 0;
    expect(parseLanguageCode(text + " x -L jp") == kJapanese, "the last switch does not count in ",
           text, " x -L jp");
    expect(parseLanguageCode('"' + text + "\" -l\tJP") == kJapanese,
           "quotes hide the switch behind them in \"", text, "\" -l\tJP");
    expect(parseLanguageCode('"' + text + '"') == 0, "a switch counts within the quotes of \"",
           text, '"');
    return 0;
}
