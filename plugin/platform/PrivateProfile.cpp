#include "platform/PrivateProfile.h"

#include <algorithm>

namespace streakfall::platform::profile {

namespace {

constexpr std::string_view kLineEnd = "\r\n";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";  // some editors put it in front

constexpr bool isBlank(char c) { return c == ' ' || c == '\t'; }

std::string_view trimmed(std::string_view text) {
    while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back())) text.remove_suffix(1);
    return text;
}

constexpr char lowered(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool sameName(std::string_view a, std::string_view b) {
    return std::ranges::equal(trimmed(a), trimmed(b), {}, lowered, lowered);
}

std::string_view unquoted(std::string_view value) {
    const bool quoted = value.size() >= 2 && (value.front() == '"' || value.front() == '\'') &&
                        value.front() == value.back();
    return quoted ? value.substr(1, value.size() - 2) : value;
}

// One line of the text, by places in it.
struct Line {
    std::size_t begin;
    std::size_t end;   // of the content
    std::size_t next;  // behind the line end: "\r\n", "\n" or "\r"
};

Line lineAt(std::string_view text, std::size_t begin) {
    const std::size_t end = std::min(text.find_first_of("\r\n", begin), text.size());
    const std::size_t width = end == text.size() ? 0 : text.substr(end, 2) == kLineEnd ? 2 : 1;
    return {begin, end, end + width};
}

std::size_t firstLine(std::string_view text) {
    return text.starts_with(kByteOrderMark) ? kByteOrderMark.size() : 0;
}

std::optional<std::string_view> sectionName(std::string_view line) {
    line = trimmed(line);
    const std::size_t close = line.find(']');
    if (line.empty() || line.front() != '[' || close == line.npos) return std::nullopt;
    return line.substr(1, close - 1);
}

// Where a section and one key of it stand in the text.
struct Place {
    bool hasSection = false;
    std::size_t sectionEnd = 0;        // behind the section's last line that is not blank
    std::optional<std::size_t> value;  // behind the key's equals sign
    std::size_t valueEnd = 0;          // the end of that line's content
};

Place locate(std::string_view text, std::string_view section, std::string_view key) {
    Place place;
    for (std::size_t at = firstLine(text); at < text.size();) {
        const Line line = lineAt(text, at);
        at = line.next;
        const std::string_view content = text.substr(line.begin, line.end - line.begin);
        if (const auto name = sectionName(content)) {
            if (place.hasSection) break;
            place.hasSection = sameName(*name, section);
        }
        if (!place.hasSection) continue;
        if (!trimmed(content).empty()) place.sectionEnd = line.next;

        const std::size_t equals = content.find('=');
        const bool isKey =
            equals != content.npos && !sectionName(content) && !trimmed(content).starts_with(';');
        if (isKey && sameName(content.substr(0, equals), key)) {
            place.value = line.begin + equals + 1;
            place.valueEnd = line.end;
            break;
        }
    }
    return place;
}

bool endsLine(std::string_view text) {
    return text.empty() || text == kByteOrderMark || text.back() == '\n' || text.back() == '\r';
}

std::string joined(std::initializer_list<std::string_view> parts) {
    std::string text;
    for (const std::string_view part : parts) text.append(part);
    return text;
}

}  // namespace

std::optional<std::string_view> findValue(std::string_view text, std::string_view section,
                                          std::string_view key) {
    const Place place = locate(text, section, key);
    if (!place.value) return std::nullopt;
    return unquoted(trimmed(text.substr(*place.value, place.valueEnd - *place.value)));
}

std::string withValue(std::string_view text, std::string_view section, std::string_view key,
                      std::string_view value) {
    const Place place = locate(text, section, key);
    if (place.value) {
        return joined({text.substr(0, *place.value), value, text.substr(place.valueEnd)});
    }
    const std::string_view before = place.hasSection ? text.substr(0, place.sectionEnd) : text;
    const std::string header =
        place.hasSection ? std::string() : joined({"[", section, "]", kLineEnd});
    return joined({before, endsLine(before) ? std::string_view() : kLineEnd, header, key, "=",
                   value, kLineEnd, text.substr(before.size())});
}

std::int32_t parseInteger(std::string_view text) {
    text = trimmed(text);
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+')) text.remove_prefix(1);
    std::uint32_t magnitude = 0;
    for (const char c : text) {
        if (c < '0' || c > '9') break;
        magnitude = magnitude * 10 + static_cast<std::uint32_t>(c - '0');
    }
    return static_cast<std::int32_t>(negative ? 0u - magnitude : magnitude);
}

}  // namespace streakfall::platform::profile
