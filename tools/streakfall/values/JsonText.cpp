#include "JsonText.h"

#include <algorithm>
#include <set>
#include <string_view>
#include <vector>

#include "Failure.h"

namespace tool {

namespace {

using Json = nlohmann::ordered_json;

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// "line 3, column 7" of the byte with this number, from 1; columns count characters.
std::string placeOf(std::string_view text, std::size_t byte) {
    text = text.substr(0, byte > 0 ? byte - 1 : 0);
    const auto lineStart = text.rfind('\n') + 1;  // npos becomes 0
    const auto line = std::count(text.begin(), text.end(), '\n') + 1;
    const auto column = std::count_if(text.begin() + static_cast<std::ptrdiff_t>(lineStart),
                                      text.end(), [](char c) { return (c & 0xC0) != 0x80; }) +
                        1;
    return fmt::format("line {}, column {}", line, column);
}

// What walks a value calls itself for what is in it, and the stack has an end.
constexpr int kDeepest = 32;

}  // namespace

Json parseJson(const std::string& source) {
    std::string_view text = source;
    if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
    std::vector<std::set<std::string>> keys;  // of the objects that are open
    std::string lastKey;
    const auto watch = [&](int depth, Json::parse_event_t event, Json& parsed) {
        if (depth > kDeepest) failUsage("nested deeper than {}", kDeepest);
        if (event == Json::parse_event_t::object_start) keys.emplace_back();
        if (event == Json::parse_event_t::object_end) keys.pop_back();
        if (event == Json::parse_event_t::key) {
            lastKey = parsed.get<std::string>();
            if (!keys.back().insert(lastKey).second) failUsage("\"{}\" is given twice", lastKey);
        }
        return true;
    };
    try {
        return Json::parse(text, watch);
    } catch (const Json::parse_error& error) {
        fail(Exit::kUsage, "not JSON at {}", placeOf(text, error.byte));
    } catch (const Json::out_of_range&) {
        fail(Exit::kUsage, "\"{}\": the number is too large", lastKey);
    }
}

std::string plainText(const Json& value, std::string_view name) {
    if (value.is_string()) return value.get<std::string>();
    if (value.is_boolean()) return value.get<bool>() ? "on" : "off";
    if (value.is_number()) return value.dump();
    if (!value.is_array())
        failUsage("\"{}\": {} is no value; write a number, a text, true, false or a list", name,
                  value.dump());
    std::string text;
    for (const Json& part : value) {
        if (!text.empty()) text += ',';
        text += plainText(part, name);
    }
    return text;
}

}  // namespace tool
