#include "DialledLooks.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "Random32.h"
#include "effect/LineSynthesis.h"

namespace bench {
namespace {

using streakfall::EffectParams;

constexpr double kPi = 3.14159265358979323846;
constexpr double kFixedOne = 65536.0;
// A person goes on until something shows.
constexpr std::size_t kFewestLines = 10;

// Neighbouring seeds give unlike streams.
std::uint32_t mixed(std::uint32_t seed, std::uint32_t index) {
    std::uint32_t v = seed * 0x9E3779B9u + index * 0x85EBCA6Bu + 1u;
    for (const unsigned shift : {16u, 15u}) v = (v ^ (v >> shift)) * 0x7FEB352Du;
    v ^= v >> 16;
    return v != 0 ? v : 1u;
}

// The person at the panel: turns one knob after another, and says what was turned.
class Dialler {
  public:
    Dialler(std::uint32_t seed, std::uint32_t index, const FrameSize& frame)
        : random(mixed(seed, index)), size(frame), waved(index % 3 == 2) {}

    DialledLook dial(const std::string& name) {
        do {
            p = defaultParams(size);
            words.clear();
            dialAll();
            lines.clear();
            const streakfall::FrameInfo frame = frameInfo(size);
            streakfall::generateLines(streakfall::convertParams(p, frame), frame, lines);
        } while (lines.size() < kFewestLines);
        return {name, words, p};
    }

  private:
    void dialAll() {
        dialLines();
        dialPlace();
        dialEnds();
        dialColor();
        if (waved) dialWave();
        if (in100(30)) dialFan();
        if (in100(25)) dialGroups();
        if (in100(45)) dialRepeat();
    }
    bool in100(int percent) { return random.unit() * 100.0 < percent; }
    // A multiple of `step`.
    double linear(double low, double high, double step) {
        return std::round(random.between(low, high) / step) * step;
    }
    // As often between 10 and 20 as between 100 and 200.
    double even(double low, double high, double step) {
        return std::round(std::exp(random.between(std::log(low), std::log(high))) / step) * step;
    }
    void say(const char* format, double value) {
        char text[64];
        std::snprintf(text, sizeof text, format, value);
        say(text);
    }
    void say(const char* text) {
        if (!words.empty()) words += ", ";
        words += text;
    }

    void dialLines() {
        const double kind = random.unit();
        p.thickness = kind < 0.55   ? even(1.0, 8.0, 0.5)
                      : kind < 0.80 ? even(8.0, 20.0, 0.5)
                                    : even(20.0, 50.0, 1.0);
        say("%g thick", p.thickness);
        if (in100(40)) {
            p.thicknessRandom = linear(20, 100, 10);
            say("+-%g %%", p.thicknessRandom);
        }
        p.length = even(80, 1500, 10);
        say("%g long", p.length);
        if (in100(60)) p.lengthRandom = linear(10, 100, 10);
        if (in100(70)) p.offsetRandom = linear(10, 150, 10);
        p.densityOfLines = even(10, 200, 5);
        say("density %g", p.densityOfLines);
        if (in100(50)) p.densityRandom = linear(10, 100, 10);
        p.randomSeed = static_cast<std::int32_t>(linear(0, 100, 1));
    }

    // Through somewhere near the middle; half of them upright, level or in a corner's direction.
    void dialPlace() {
        const double angle =
            in100(50) ? linear(0, 7, 1) * kPi / 4.0 : random.between(0.0, 2.0 * kPi);
        const double x = size.width * random.between(0.2, 0.8);
        const double y = size.height * random.between(0.2, 0.8);
        const double half = size.height * random.between(0.1, 0.6);
        const auto point = [&](double sign) -> streakfall::FixedPoint {
            return {static_cast<PF_Fixed>((x + sign * half * std::cos(angle)) * kFixedOne),
                    static_cast<PF_Fixed>((y + sign * half * std::sin(angle)) * kFixedOne)};
        };
        p.startPoint = point(-1.0);
        p.endPoint = point(1.0);
    }

    void dialEnds() {
        if (in100(15)) {
            p.enableInOut = 0;
            say("blunt");
        } else if (in100(60)) {
            p.startLength = linear(0, 100, 5);
            p.endLength = linear(0, 100, 5);
            if (in100(40)) p.startThickness = linear(0, 100, 10);
            if (in100(40)) p.endThickness = linear(0, 100, 10);
        }
        if (in100(15)) {
            p.useStartEndOpacity = 1;
            p.startOpacity = linear(0, 100, 10);
            p.endOpacity = linear(0, 100, 10);
            p.opacityCenterPosition = linear(10, 90, 10);
            say("opacity ramp");
        }
    }

    void dialColor() {
        const auto channel = [&] { return static_cast<std::uint8_t>(linear(0, 255, 1)); };
        p.color = {255, channel(), channel(), channel()};
        if (in100(45)) {
            p.opacity = linear(10, 95, 5);
            say("opacity %g %%", p.opacity);
        }
        if (in100(50)) {
            p.colorRandomH = static_cast<PF_Fixed>(linear(10, 360, 10) * kFixedOne);
            p.colorRandomS = linear(0, 60, 10);
            p.colorRandomV = linear(0, 60, 10);
            say("jittered");
        }
    }

    void dialWave() {
        p.enableWave = 1;
        p.waveAmount = even(5, 100, 1);
        p.waveLength = even(10, 200, 5);
        p.waveAmountRandom = in100(50) ? linear(10, 100, 10) : 0.0;
        p.waveLengthRandom = in100(50) ? linear(10, 100, 10) : 0.0;
        p.wavePhaseRandom = in100(50) ? linear(10, 100, 10) : 0.0;
        say("wave %g", p.waveAmount);
        words += " of ";
        words += std::to_string(static_cast<int>(p.waveLength));
    }

    void dialFan() {
        p.taper = linear(10, 100, 5) * (in100(50) ? 1.0 : -1.0);
        p.baseLength = linear(0, 1000, 50);
        p.archRate = in100(30) ? linear(20, 200, 10) : 100.0;
        p.fixBandForm = in100(20);
        say("fan %g", p.taper);
    }

    void dialGroups() {
        p.groupLines = linear(2, 30, 1);
        p.linesRandom = linear(0, 10, 1);
        p.attraction = linear(0, 100, 5);
        p.intervalRandom = linear(0, 200, 10);
        p.groupOffsetRandom = linear(0, 100, 10);
        say("groups");
    }

    void dialRepeat() {
        p.repeat = 1;
        p.repeatInterval = linear(0, 400, 10);
        p.randomRepeatNum = static_cast<std::int32_t>(linear(0, 10, 1));
        say("repeated");
    }

    Random32 random;
    const FrameSize& size;
    EffectParams p;
    bool waved;
    std::string words;
    std::vector<streakfall::LineRecord> lines;
};

}  // namespace

std::vector<DialledLook> dialLooks(std::uint32_t seed, int count, const FrameSize& size) {
    std::vector<DialledLook> looks;
    for (int i = 0; i < count; ++i) {
        char name[16];
        std::snprintf(name, sizeof name, "%02d", i);
        looks.push_back(Dialler(seed, static_cast<std::uint32_t>(i), size).dial(name));
    }
    return looks;
}

}  // namespace bench
