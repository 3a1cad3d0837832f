#include "ParamValue.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

#include "Failure.h"
#include "Text.h"

namespace tool {

using standin::ParamInfo;
using standin::Value;

namespace {

[[noreturn]] void failValue(const ParamInfo& param, std::string_view text,
                            std::string_view wanted) {
    failUsage("\"{}\": cannot read \"{}\" as {}", param.name, text, wanted);
}

double numberOf(const ParamInfo& param, std::string_view text, std::string_view wanted) {
    const auto number = parseNumber(text);
    if (!number) failValue(param, text, wanted);
    return *number;
}

double fixedPointOf(const ParamInfo& param, std::string_view text, std::string_view wanted) {
    const double number = numberOf(param, text, wanted);
    if (std::abs(number) >= 32768)
        failUsage("\"{}\": {} is out of the range of -32768 to 32768", param.name, trimmed(text));
    return number;
}

std::optional<bool> parseSwitch(std::string_view text) {
    const std::string word = lowered(trimmed(text));
    if (word == "1" || word == "on" || word == "yes" || word == "true") return true;
    if (word == "0" || word == "off" || word == "no" || word == "false") return false;
    return std::nullopt;
}

std::string_view withoutPercent(std::string_view text) {
    text = trimmed(text);
    if (text.ends_with('%')) text.remove_suffix(1);
    return text;
}

}  // namespace

ParamValue::ParamValue(const ParamInfo& param, std::string_view text) : type_(param.type) {
    parse(param, text);
}

void ParamValue::parse(const ParamInfo& param, std::string_view text) {
    switch (param.type) {
        case PF_Param_FLOAT_SLIDER:
            numbers_[0] = numberOf(param, withoutPercent(text), "a number");
            break;
        case PF_Param_ANGLE:
            numbers_[0] = fixedPointOf(param, text, "degrees");
            break;
        case PF_Param_SLIDER: {
            const auto number = parseInt(text);
            if (!number) failValue(param, text, "a whole number");
            numbers_[0] = *number;
            break;
        }
        case PF_Param_CHECKBOX: {
            const auto on = parseSwitch(text);
            if (!on) failValue(param, text, "on or off");
            numbers_[0] = *on ? 1 : 0;
            break;
        }
        case PF_Param_COLOR:
            parseColour(param, trimmed(text));
            break;
        case PF_Param_POINT:
            parsePoint(param, text);
            break;
        default:
            failUsage("\"{}\" is a {} and takes no value", param.name,
                      standin::kindName(param.type));
    }
}

void ParamValue::parseColour(const ParamInfo& param, std::string_view text) {
    constexpr std::string_view kWanted = "a colour, #rrggbb or red,green,blue of 0 to 255";
    if (text.starts_with('#')) {
        const std::string_view digits = text.substr(1);
        unsigned packed = 0;
        const auto [end, error] =
            std::from_chars(digits.data(), digits.data() + digits.size(), packed, 16);
        if (digits.size() != 6 || error != std::errc{} || end != digits.data() + digits.size())
            failValue(param, text, kWanted);
        numbers_ = {static_cast<double>(packed >> 16), static_cast<double>(packed >> 8 & 255),
                    static_cast<double>(packed & 255)};
        return;
    }
    const auto parts = split(text, ',');
    if (parts.size() != 3) failValue(param, text, kWanted);
    for (std::size_t i = 0; i < 3; ++i) {
        const auto number = parseInt(parts[i]);
        if (!number || *number < 0 || *number > 255) failValue(param, text, kWanted);
        numbers_[i] = *number;
    }
}

void ParamValue::parsePoint(const ParamInfo& param, std::string_view text) {
    constexpr std::string_view kWanted = "a point, x,y in pixels or 30%,50%";
    const auto parts = split(text, ',');
    if (parts.size() != 2) failValue(param, text, kWanted);
    for (std::size_t i = 0; i < 2; ++i) {
        numbers_[i] = fixedPointOf(param, withoutPercent(parts[i]), kWanted);
        percentOfLayer_[i] = trimmed(parts[i]).ends_with('%');
    }
}

std::optional<std::string> ParamValue::outOfRange(const ParamInfo& param) const {
    if (param.type != PF_Param_FLOAT_SLIDER && param.type != PF_Param_SLIDER) return std::nullopt;
    if (numbers_[0] >= param.validMin && numbers_[0] <= param.validMax) return std::nullopt;
    return fmt::format("\"{}\": {} is outside {} to {}; the effect gets it as it is", param.name,
                       numbers_[0], param.validMin, param.validMax);
}

Value ParamValue::on(standin::LayerSize layer) const {
    switch (type_) {
        case PF_Param_COLOR:
            return Value::color(numbers_[0], numbers_[1], numbers_[2]);
        case PF_Param_POINT: {
            const auto pixels = [&](std::size_t i, A_long side) {
                return percentOfLayer_[i] ? numbers_[i] / 100 * side : numbers_[i];
            };
            return Value::point(pixels(0, layer.width), pixels(1, layer.height));
        }
        default:
            return Value::number(numbers_[0]);
    }
}

std::string valueText(const ParamInfo& param, const Value& value) {
    const auto& part = value.part;
    switch (param.type) {
        case PF_Param_CHECKBOX:
            return part[0] != 0 ? "on" : "off";
        case PF_Param_COLOR:
            return fmt::format("#{:02x}{:02x}{:02x}", static_cast<int>(part[1]),
                               static_cast<int>(part[2]), static_cast<int>(part[3]));
        case PF_Param_POINT:
            return fmt::format("{},{}", part[0], part[1]);
        default:
            return param.hasValue() ? fmt::format("{}", part[0]) : "";
    }
}

}  // namespace tool
