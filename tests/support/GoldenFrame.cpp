#include "support/GoldenFrame.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>

#include "params/ParamRows.h"

namespace golden {

namespace {

using streakfall::EffectParams;
using streakfall::kParamRows;
using streakfall::ParamRow;

#define FIELD(field) \
    { #field, offsetof(EffectParams, field) }

const std::map<std::string, std::size_t> kFields{
    FIELD(startPoint),
    FIELD(endPoint),
    FIELD(opacity),
    FIELD(color),
    FIELD(thickness),
    FIELD(thicknessRandom),
    FIELD(offsetRandom),
    FIELD(length),
    FIELD(lengthRandom),
    FIELD(densityOfLines),
    FIELD(densityRandom),
    FIELD(randomInterval),
    FIELD(randomArray),
    FIELD(randomSeed),
    FIELD(clearBackground),
    FIELD(enableTaper),
    FIELD(taper),
    FIELD(baseLength),
    FIELD(archRate),
    FIELD(fixBandForm),
    FIELD(groupLines),
    FIELD(linesRandom),
    FIELD(attraction),
    FIELD(groupOffsetRandom),
    FIELD(intervalRandom),
    FIELD(offset),
    FIELD(autoOffset),
    FIELD(repeat),
    FIELD(repeatInterval),
    FIELD(randomRepeatNum),
    FIELD(enableInOut),
    FIELD(startThickness),
    FIELD(startLength),
    FIELD(endThickness),
    FIELD(endLength),
    FIELD(useStartEndOpacity),
    FIELD(startOpacity),
    FIELD(endOpacity),
    FIELD(opacityCenterPosition),
    FIELD(colorRandomH),
    FIELD(colorRandomS),
    FIELD(colorRandomV),
    FIELD(enableWave),
    FIELD(waveAmount),
    FIELD(waveAmountRandom),
    FIELD(waveLength),
    FIELD(waveLengthRandom),
    FIELD(wavePhase),
    FIELD(wavePhaseRandom),
};

#undef FIELD

const ParamRow& rowAt(std::size_t offset) {
    const auto row = std::ranges::find_if(kParamRows, [&](const ParamRow& r) {
        return r.place.size != 0 && r.place.offset == static_cast<std::int32_t>(offset);
    });
    if (row == kParamRows.end()) throw std::logic_error("a field without a parameter");
    return *row;
}

template <class T>
void put(EffectParams& params, std::size_t offset, T value) {
    std::memcpy(reinterpret_cast<char*>(&params) + offset, &value, sizeof value);
}

void store(EffectParams& params, const ParamRow& row, const std::vector<double>& values) {
    const auto offset = static_cast<std::size_t>(row.place.offset);
    const auto whole = [&](std::size_t i) { return static_cast<std::int32_t>(values.at(i)); };
    const auto byte = [&](std::size_t i) { return static_cast<std::uint8_t>(values.at(i)); };
    switch (row.type) {
        case PF_Param_FLOAT_SLIDER:
            return put(params, offset, values.at(0));
        case PF_Param_CHECKBOX:
            return put(params, offset, byte(0));
        case PF_Param_POINT:
            return put(params, offset, streakfall::FixedPoint{whole(0), whole(1)});
        case PF_Param_COLOR:
            return put(params, offset, PF_Pixel{byte(0), byte(1), byte(2), byte(3)});
        default:
            return put(params, offset, whole(0));
    }
}

std::int32_t* infoNumber(streakfall::FrameInfo& info, const std::string& key) {
    if (key == "width") return &info.width;
    if (key == "height") return &info.height;
    if (key == "origin_x") return &info.originX;
    if (key == "origin_y") return &info.originY;
    if (key == "dsx_num") return &info.downsampleX.num;
    if (key == "dsy_num") return &info.downsampleY.num;
    if (key == "current_time") return &info.currentTime;
    if (key == "time_step") return &info.timeStep;
    return nullptr;
}

std::uint32_t* infoDenominator(streakfall::FrameInfo& info, const std::string& key) {
    if (key == "dsx_den") return &info.downsampleX.den;
    if (key == "dsy_den") return &info.downsampleY.den;
    return nullptr;
}

int hashIndex(const std::string& key) {
    if (key == "buffer8") return 0;
    if (key == "buffer16") return 1;
    return key == "buffer32" ? 2 : -1;
}

std::vector<std::string> words(const std::string& line) {
    std::istringstream stream(line);
    std::vector<std::string> result;
    for (std::string word; stream >> word;) result.push_back(word);
    return result;
}

double number(const std::string& word) {
    char* end = nullptr;
    const double value = std::strtod(word.c_str(), &end);
    if (word.empty() || *end != '\0') throw std::runtime_error("'" + word + "' is no number");
    return value;
}

void readLine(Frame& frame, const std::vector<std::string>& line) {
    const std::string& key = line.at(0);
    if (std::int32_t* const target = infoNumber(frame.info, key)) {
        *target = static_cast<std::int32_t>(number(line.at(1)));
    } else if (std::uint32_t* const denominator = infoDenominator(frame.info, key)) {
        *denominator = static_cast<std::uint32_t>(number(line.at(1)));
    } else if (const int depth = hashIndex(key); depth >= 0) {
        frame.hashes[static_cast<std::size_t>(depth)] = std::stoull(line.at(1), nullptr, 16);
    } else if (const auto field = kFields.find(key); field != kFields.end()) {
        const ParamRow& row = rowAt(field->second);
        auto& values = frame.named[row.id];
        for (std::size_t i = 1; i < line.size(); ++i) values.push_back(number(line[i]));
        store(frame.params, row, values);
    } else {
        throw std::runtime_error("unknown key " + key);
    }
}

streakfall::LineRecord readRecord(const std::vector<std::string>& line) {
    return {number(line.at(0)),
            number(line.at(1)),
            number(line.at(2)),
            number(line.at(3)),
            number(line.at(4)),
            number(line.at(5)),
            static_cast<std::int32_t>(number(line.at(6)))};
}

std::vector<std::byte> readBytes(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    const auto* const first = reinterpret_cast<const std::byte*>(text.data());
    return {first, first + text.size()};
}

Frame readFile(const std::filesystem::path& path) {
    Frame frame;
    frame.name = path.stem().string();
    frame.params = defaultParams();
    frame.pixels8 = readBytes(std::filesystem::path(path).replace_extension(".argb8"));
    std::ifstream file(path);
    std::size_t recordsLeft = 0;
    int lineNumber = 0;
    for (std::string text; std::getline(file, text);) {
        ++lineNumber;
        const std::vector<std::string> line = words(text);
        if (line.empty() || line[0][0] == '#') continue;
        try {
            if (recordsLeft > 0) {
                frame.lines.push_back(readRecord(line));
                --recordsLeft;
            } else if (line[0] == "lines") {
                recordsLeft = static_cast<std::size_t>(number(line.at(1)));
            } else {
                readLine(frame, line);
            }
        } catch (const std::exception& failure) {
            throw std::runtime_error(path.string() + ", line " + std::to_string(lineNumber) + ": " +
                                     failure.what());
        }
    }
    if (recordsLeft != 0) throw std::runtime_error(path.string() + " ends too early");
    return frame;
}

std::vector<Frame> readAll() {
    std::vector<Frame> all;
    const std::filesystem::path folder = std::string(STREAKFALL_TEST_DATA) + "/golden";
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension() == ".txt") all.push_back(readFile(entry.path()));
    }
    if (all.empty()) throw std::runtime_error("no golden frames in " + folder.string());
    std::ranges::sort(all, {}, &Frame::name);
    return all;
}

}  // namespace

EffectParams defaultParams() {
    EffectParams params;
    for (const ParamRow& row : kParamRows) {
        if (row.type == PF_Param_POINT || row.place.size == 0) continue;
        store(params, row,
              row.type == PF_Param_COLOR ? std::vector<double>{255, 0, 0, 0}
                                         : std::vector<double>{row.x});
    }
    return params;
}

const std::vector<Frame>& frames() {
    static const std::vector<Frame> all = readAll();
    return all;
}

const Frame& frame(const std::string& prefix) {
    for (const Frame& candidate : frames()) {
        if (candidate.name.starts_with(prefix)) return candidate;
    }
    throw std::runtime_error("no golden frame " + prefix);
}

}  // namespace golden
