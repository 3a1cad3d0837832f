#include "Text.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <numeric>
#include <utility>

namespace tool {

std::string_view trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(" \t\r\n");
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t\r\n") - first + 1);
}

std::string lowered(std::string_view text) {
    std::string result(text);
    for (char& c : result) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return result;
}

std::vector<std::string_view> split(std::string_view text, char separator) {
    std::vector<std::string_view> parts;
    for (;;) {
        const auto at = text.find(separator);
        parts.push_back(text.substr(0, at));
        if (at == std::string_view::npos) return parts;
        text.remove_prefix(at + 1);
    }
}

namespace {

template <class Number>
std::optional<Number> parseWhole(std::string_view text) {
    text = trimmed(text);
    if (text.size() > 1 && text[0] == '+' && text[1] != '-') text.remove_prefix(1);
    Number number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc{} || end != text.data() + text.size()) return std::nullopt;
    return number;
}

}  // namespace

std::optional<int> parseInt(std::string_view text) { return parseWhole<int>(text); }

std::optional<double> parseNumber(std::string_view text) {
    const auto number = parseWhole<double>(text);
    return number && std::isfinite(*number) ? number : std::nullopt;
}

int editDistance(std::string_view first, std::string_view second) {
    const std::string a = lowered(first);
    const std::string b = lowered(second);
    std::vector<int> row(b.size() + 1);
    std::iota(row.begin(), row.end(), 0);
    for (std::size_t i = 0; i < a.size(); ++i) {
        int diagonal = std::exchange(row[0], static_cast<int>(i) + 1);
        for (std::size_t j = 0; j < b.size(); ++j) {
            const int replace = diagonal + (a[i] == b[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replace, row[j] + 1, row[j + 1] + 1});
        }
    }
    return row.back();
}

std::vector<std::string> nearestOf(std::string_view wanted, const std::vector<std::string>& names) {
    constexpr std::size_t kCount = 3;
    const std::string text = lowered(trimmed(wanted));
    std::vector<std::pair<int, std::string>> byDistance;
    for (const std::string& name : names) {
        const bool part = text.size() > 2 && lowered(name).find(text) != std::string::npos;
        const int distance = editDistance(text, name);
        byDistance.emplace_back(part ? std::min(distance, 2) : distance, name);
    }
    std::stable_sort(byDistance.begin(), byDistance.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    const int farthest = static_cast<int>(text.size()) / 2;
    std::vector<std::string> nearest;
    for (const auto& [distance, name] : byDistance)
        if (nearest.empty() || (distance <= farthest && nearest.size() < kCount))
            nearest.push_back(name);
    return nearest;
}

std::string quotedList(const std::vector<std::string>& names) {
    std::string text;
    for (const std::string& name : names) {
        if (!text.empty()) text += ", ";
        text += '"' + name + '"';
    }
    return text;
}

}  // namespace tool
