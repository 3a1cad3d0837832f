#include "FrameCase.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <limits>

#include "validate/Frames.h"

namespace fuzz {

using namespace standin;
using validate::Random;

namespace {

enum FrameField : std::size_t {
    kWidth,
    kHeight,
    kDepth,
    kLegacy,
    kTime,
    kStep,
    kRate,
    kReduction,
    kDraft,
    kPart,
    kLeft,
    kTop,
};

struct FrameRow {
    const char* name;
    double min, max, usualMin, usualMax, standard;
};

constexpr double kEndOfTime = std::numeric_limits<A_long>::max();

// By FrameField.
constexpr FrameRow kFrameRows[] = {
    {"Frame Width", 1, 96, 1, 96, 64},
    {"Frame Height", 1, 64, 1, 64, 48},
    {"Frame Depth", 8, 32, 8, 32, 8},  // up to 8, 16, or above: float
    {"Frame Legacy", 0, 1, 0, 1, 0},   // float frames come by the smart road all the same
    {"Frame Time", -kEndOfTime, kEndOfTime, -10, 250, 0},
    {"Frame Step", 1, 1001, 1, 1, 1},
    {"Frame Rate", 1, 30000, 24, 30, 24},
    {"Frame Reduction", 1, 8, 1, 4, 1},  // pixels of the full-size layer to one of the frame
    {"Frame Draft", 0, 1, 0, 1, 0},
    {"Frame Part", 0, 1, 0, 1, 0},  // smart road: the middle of the frame alone
    {"Frame Left", -64, 64, -64, 64, 0},
    {"Frame Top", -64, 64, -64, 64, 0},
};

ParamInfo describe(const FrameRow& row) {
    ParamInfo info;
    info.name = row.name;
    info.type = PF_Param_SLIDER;
    info.validMin = row.min;
    info.validMax = row.max;
    info.sliderMin = row.usualMin;
    info.sliderMax = row.usualMax;
    info.defaultValue = Value::number(row.standard);
    return info;
}

// For kinds that the effect gives no range: all that their form in the host's record can hold.
void giveRange(ParamInfo& info) {
    constexpr double kFixedEnd = 32768;
    const auto set = [&](double min, double max, double usualMin, double usualMax) {
        info.validMin = min;
        info.validMax = max;
        info.sliderMin = usualMin;
        info.sliderMax = usualMax;
    };
    if (info.type == PF_Param_CHECKBOX) set(0, 1, 0, 1);
    if (info.type == PF_Param_COLOR) set(0, PF_MAX_CHAN8, 0, PF_MAX_CHAN8);
    if (info.type == PF_Param_POINT) set(-kFixedEnd, kFixedEnd, -50, 150);
    if (info.type == PF_Param_ANGLE) set(-kFixedEnd, kFixedEnd, -360, 360);
}

std::size_t partsOf(const ParamInfo& info) {
    return info.type == PF_Param_COLOR ? 4 : info.type == PF_Param_POINT ? 2 : 1;
}

std::optional<double> readNumber(std::string_view word, const ParamInfo& info) {
    if (word == "min") return info.validMin;
    if (word == "max") return info.validMax;
    double number = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
    if (error != std::errc{} || end != word.data() + word.size()) return std::nullopt;
    return number;
}

void appendNumber(std::string& text, double number) {
    char digits[40];
    text.append(digits, std::to_chars(digits, std::end(digits), number).ptr);
}

double specialNumber(Random& random) {
    using Limits = std::numeric_limits<double>;
    static constexpr double kSpecial[] = {
        Limits::quiet_NaN(),
        Limits::infinity(),
        -Limits::infinity(),
        Limits::max(),
        Limits::lowest(),
        Limits::min(),
        Limits::denorm_min(),
        -Limits::denorm_min(),
        -0.0,
        0x1p15,
        0x1p16,
        0x1p24,
        0x1p31,
        -0x1p31,
        0x1p31 - 1,
        0x1p32,
        0x1p53,
        0x1p63,
        0x1p64,
        1e-7,
        std::numeric_limits<float>::max(),
    };
    return random.oneOf(std::span<const double>(kSpecial));
}

double randomNumber(const ParamInfo& info, Random& random) {
    switch (random.below(12)) {
        case 0:
            return info.validMin;
        case 1:
            return info.validMax;
        case 2:  // just past
            return random.oneIn(2) ? info.validMin - random.unit() : info.validMax + random.unit();
        case 3:  // far past
            return random.real(-1, 1) * std::pow(10, random.between(0, 40));
        case 4:
            return specialNumber(random);
        case 5:  // any exponent, numbers that are none included
            return std::bit_cast<double>(random.bits() & 0xFFFF'0000'0000'0000u);
        case 6:
            return random.real(info.validMin, info.validMax);
        case 7:
            return std::round(random.real(info.sliderMin, info.sliderMax));
        default:
            return random.real(info.sliderMin, info.sliderMax);
    }
}

}  // namespace

FrameFields::FrameFields(const Host& host) {
    for (const FrameRow& row : kFrameRows) fields_.push_back(describe(row));
    for (const ParamInfo& param : host.params()) {
        if (!param.hasValue()) continue;
        fields_.push_back(param);
        giveRange(fields_.back());
    }
}

FrameCase::FrameCase(const FrameFields& fields, std::string_view text)
    : fields_(fields), values_(fields.size()) {
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        readLine(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
}

void FrameCase::readLine(std::string_view line) {
    const std::size_t equals = line.find('=');
    if (equals == line.npos) return;
    std::string_view words = line.substr(equals + 1);
    for (std::size_t i = 0; i < fields_.size(); ++i) {
        const ParamInfo& info = fields_[i];
        if (info.name != line.substr(0, equals)) continue;
        Value value{};
        for (std::size_t part = 0; part < partsOf(info); ++part) {
            const std::size_t end = std::min(words.find(','), words.size());
            const auto number = readNumber(words.substr(0, end), info);
            if (!number) return;
            value.part[part] = *number;
            words.remove_prefix(std::min(end + 1, words.size()));
        }
        values_[i] = value;
        return;
    }
}

std::string FrameCase::text() const {
    std::string text;
    for (std::size_t i = 0; i < fields_.size(); ++i) {
        if (!values_[i]) continue;
        text += fields_[i].name;
        for (std::size_t part = 0; part < partsOf(fields_[i]); ++part) {
            text += part == 0 ? '=' : ',';
            appendNumber(text, values_[i]->part[part]);
        }
        text += '\n';
    }
    return text;
}

int FrameCase::frameValue(std::size_t i) const {
    const ParamInfo& info = fields_[i];
    const double number = values_[i].value_or(info.defaultValue).part[0];
    if (std::isnan(number)) return static_cast<int>(info.defaultValue.part[0]);
    return static_cast<int>(std::clamp(number, info.validMin, info.validMax));
}

LayerSize FrameCase::layer() const {
    const int reduction = frameValue(kReduction);
    return {frameValue(kWidth) * reduction, frameValue(kHeight) * reduction};
}

FrameRequest FrameCase::request() const {
    const int bits = frameValue(kDepth);
    const Depth depth = bits <= 8 ? Depth::bits8 : bits <= 16 ? Depth::bits16 : Depth::float32;
    const bool legacy = frameValue(kLegacy) != 0 && depth != Depth::float32;
    const int width = frameValue(kWidth), height = frameValue(kHeight);

    FrameRequest request =
        validate::frameOf({depth, legacy ? Road::legacy : Road::smart}, width, height);
    request.currentTime = frameValue(kTime);
    request.timeStep = frameValue(kStep);
    request.timeScale = static_cast<A_u_long>(frameValue(kRate));
    request.quality = frameValue(kDraft) != 0 ? PF_Quality_LO : PF_Quality_HI;
    request.downsampleX = request.downsampleY = {1, static_cast<A_u_long>(frameValue(kReduction))};
    request.originX = frameValue(kLeft);
    request.originY = frameValue(kTop);
    if (frameValue(kPart) != 0) {
        const A_long left = request.originX, top = request.originY;
        request.rect = PF_LRect{left + width / 4, top + height / 4, left + width - width / 4,
                                top + height - height / 4};
    }
    return request;
}

void FrameCase::storeIn(Instance& instance) const {
    for (std::size_t i = 0; i < fields_.size(); ++i) {
        if (values_[i] && fields_[i].id != 0) instance.storeValue(fields_[i].id, *values_[i]);
    }
}

void FrameCase::change(Random& random) {
    if (random.oneIn(16)) {
        const int share = random.between(2, 12);
        for (std::size_t i = 0; i < values_.size(); ++i) {
            values_[i].reset();
            if (random.oneIn(share)) changeOne(i, random);
        }
        return;
    }
    for (int count = random.between(1, 4); count > 0; --count) {
        changeOne(static_cast<std::size_t>(random.below(static_cast<int>(values_.size()))), random);
    }
}

void FrameCase::changeOne(std::size_t i, Random& random) {
    if (values_[i] && random.oneIn(4)) return values_[i].reset();
    Value value = values_[i].value_or(fields_[i].defaultValue);
    const std::size_t parts = partsOf(fields_[i]);
    const bool all = random.oneIn(2);
    const std::size_t one = random.bits() % parts;
    for (std::size_t part = 0; part < parts; ++part) {
        if (all || part == one) value.part[part] = randomNumber(fields_[i], random);
    }
    values_[i] = value;
}

void FrameCase::takeFrom(const FrameCase& other, Random& random) {
    for (std::size_t i = 0; i < values_.size(); ++i) {
        if (random.oneIn(2)) values_[i] = other.values_[i];
    }
}

}  // namespace fuzz
