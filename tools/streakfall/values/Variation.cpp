#include "Variation.h"

#include <cmath>
#include <optional>

#include "Failure.h"
#include "Text.h"

namespace tool {

namespace {

using standin::ParamInfo;
using Values = std::vector<std::string>;

void checkCount(double count, std::string_view text) {
    if (!(count >= 1 && count <= kMostTiles))
        failUsage("--vary: \"{}\" makes {} values; 1 to {} are possible", text, count, kMostTiles);
}

// "0..100:25". Nothing when it is no range.
std::optional<Values> parseRange(std::string_view text) {
    const auto dots = text.find("..");
    if (dots == std::string_view::npos) return std::nullopt;
    const auto colon = text.find(':', dots);
    const auto first = parseNumber(text.substr(0, dots));
    const auto last = parseNumber(text.substr(dots + 2, colon - dots - 2));
    const auto step =
        colon == std::string_view::npos ? std::optional(1.0) : parseNumber(text.substr(colon + 1));
    if (!first || !last || !step || !(*step > 0))
        failUsage("--vary: cannot read \"{}\"; write 1..12 or 0..100:25", text);
    const double count = std::floor(std::abs(*last - *first) / *step * (1 + 1e-12)) + 1;
    checkCount(count, text);
    Values values;
    for (int i = 0; i < static_cast<int>(count); ++i)
        values.push_back(fmt::format("{}", *first + (*last < *first ? -*step : *step) * i));
    return values;
}

// "12 throws": the same ones when more of them are asked for.
std::optional<Values> parseThrows(const ParamInfo& param, std::string_view text) {
    constexpr std::string_view kWord = "throws";
    if (!text.ends_with(kWord)) return std::nullopt;
    const auto count = parseInt(text.substr(0, text.size() - kWord.size()));
    if (!count || !isSeed(param))
        failUsage("--vary: \"{}\" is for \"Random Seed\": \"Random Seed=12 throws\"", text);
    checkCount(*count, text);
    Values values;
    for (const double seed : farApart(param, 0, *count)) values.push_back(fmt::format("{}", seed));
    return values;
}

Values parseList(std::string_view text) {
    Values values;
    for (const std::string_view value :
         split(text, text.find(';') == std::string_view::npos ? ',' : ';'))
        values.emplace_back(trimmed(value));
    checkCount(static_cast<double>(values.size()), text);
    return values;
}

}  // namespace

bool isSeed(const ParamInfo& param) { return param.type == PF_Param_SLIDER && param.steps(); }

// By the golden section.
std::vector<double> farApart(const ParamInfo& seed, int from, int count) {
    constexpr double kGolden = 0.6180339887498949;
    std::vector<double> places;
    for (int i = from + 1; i <= from + count; ++i) {
        const double place = std::fmod(i * kGolden, 1.0);
        places.push_back(std::round(seed.validMin + place * (seed.validMax - seed.validMin)));
    }
    return places;
}

Variation parseVariation(const ParamLookup& lookup, std::string_view text) {
    const auto equals = text.find('=');
    if (equals == std::string_view::npos)
        failUsage("--vary: \"{}\" has no \"=\"; write \"Random Seed=1..12\"", text);
    const ParamInfo& param = lookup.find(text.substr(0, equals));
    const std::string_view values = trimmed(text.substr(equals + 1));
    if (auto thrown = parseThrows(param, values)) return {&param, std::move(*thrown)};
    if (auto range = parseRange(values)) return {&param, std::move(*range)};
    return {&param, parseList(values)};
}

}  // namespace tool
