#include "params/Texts.h"

#include "platform/Platform.h"

namespace streakfall {

namespace {

// The Japanese texts as bytes of code page 932, each with its reading and its characters above it.

// settei (jikai kidou kara yuukou ni narimasu)
//   \u8A2D\u5B9A \uFF08\u6B21\u56DE\u8D77\u52D5\u304B\u3089\u6709\u52B9\u306B\u306A\u308A
//   \u307E\u3059\uFF09
constexpr char kSettings[] =
    "\x90\xDD\x92\xE8\x20\x81\x69\x8E\x9F\x89\xF1\x8B\x4E\x93\xAE\x82\xA9\x82\xE7\x97\x4C\x8C"
    "\xF8\x82\xC9\x82\xC8\x82\xE8\x82\xDC\x82\xB7\x81\x6A";

// genzai no parameeta settei wo deforuto-chi to shite kioku suru
//   \u73FE\u5728\u306E\u30D1\u30E9\u30E1\u30FC\u30BF\u8A2D\u5B9A\u3092\u30C7\u30D5\u30A9\u30EB
//   \u30C8\u5024\u3068\u3057\u3066\u8A18\u61B6\u3059\u308B
constexpr char kStoreDefaults[] =
    "\x8C\xBB\x8D\xDD\x82\xCC\x83\x70\x83\x89\x83\x81\x81\x5B\x83\x5E\x90\xDD\x92\xE8\x82\xF0"
    "\x83\x66\x83\x74\x83\x48\x83\x8B\x83\x67\x92\x6C\x82\xC6\x82\xB5\x82\xC4\x8B\x4C\x89\xAF"
    "\x82\xB7\x82\xE9";

// parameeta no deforuto-chi settei wo shoki joutai ni fukki suru
//   \u30D1\u30E9\u30E1\u30FC\u30BF\u306E\u30C7\u30D5\u30A9\u30EB\u30C8\u5024\u8A2D\u5B9A\u3092
//   \u521D\u671F\u72B6\u614B\u306B\u5FA9\u5E30\u3059\u308B
constexpr char kRestoreDefaults[] =
    "\x83\x70\x83\x89\x83\x81\x81\x5B\x83\x5E\x82\xCC\x83\x66\x83\x74\x83\x48\x83\x8B\x83\x67"
    "\x92\x6C\x90\xDD\x92\xE8\x82\xF0\x8F\x89\x8A\xFA\x8F\xF3\x91\xD4\x82\xC9\x95\x9C\x8B\x41"
    "\x82\xB7\x82\xE9";

struct TextRow {
    std::int32_t key;
    const char* first;
    const char* english;  // null: the first text serves every language
};

constexpr TextRow TextTable[] = {
    {kTextRights, "Copyright (C) QUVEX. All rights reserved.  https://quvex.example/", nullptr},
    {kTextSettings, kSettings, "Settings (Valid from next start-up)"},
    {kTextStoreDefaults, kStoreDefaults, "Set current parameter values to default"},
    {kTextRestoreDefaults, kRestoreDefaults, "Restore initial default parameter values"},
};

constexpr bool isBlank(char c) { return c == ' ' || c == '\t'; }

constexpr std::uint32_t capital(char c) {
    const char upper = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    return static_cast<unsigned char>(upper);
}

}  // namespace

std::uint32_t parseLanguageCode(std::string_view text) {
    std::uint32_t code = 0;
    std::size_t i = 0;
    while (i < text.size()) {
        const bool isSwitch = text[i] == '-' && i > 0 && isBlank(text[i - 1]) &&
                              i + 1 < text.size() && capital(text[i + 1]) == 'L';
        if (isSwitch) {
            i += 2;
            while (i < text.size() && isBlank(text[i])) ++i;
            for (code = 0; i < text.size() && !isBlank(text[i]); ++i) {
                code = code * 256 + capital(text[i]);
            }
        } else if (text[i] == '"') {
            const std::size_t close = text.find('"', i + 1);
            i = close == text.npos ? text.size() : close + 1;
        } else {
            ++i;
        }
    }
    return code;
}

bool isEnglish(std::uint32_t code, unsigned codePage) {
    constexpr std::uint32_t kJapanese = 'J' * 256 + 'P';
    if (code != 0) return code != kJapanese;
    return codePage != platform::kCodePageJapanese;
}

bool useEnglish() {
    // Hosts on several threads may ask first.
    static const std::uint32_t languageCode = parseLanguageCode(platform::commandLine());
    return isEnglish(languageCode, platform::codePage());
}

const char* lookupText(std::int32_t key) {
    for (const TextRow& row : TextTable) {
        if (row.key != key) continue;
        return row.english != nullptr && useEnglish() ? row.english : row.first;
    }
    return "-";
}

}  // namespace streakfall
