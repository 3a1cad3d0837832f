// The four fixed line lists that drawing is timed on.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "lines/LineRecord.h"
#include "shareForLines/path/Stroke.h"

namespace bench {

struct Scene {
    std::string name;
    int width, height;
    double length;  // of every line
    double ramp;    // in and out ramp, as a part of each line
    std::vector<streakfall::LineRecord> lines;
};

// To nothing at both ends; none where the scene has none.
void setUpRamps(streakfall::StrokeForm& stroke, const Scene& scene);

// Lines of many colours: each line its own.
struct LineColor {
    std::uint8_t red, green, blue;
};
inline LineColor colorOfLine(std::size_t index) {
    const auto mixed = static_cast<std::uint32_t>(index) * 2654435761u;
    return {static_cast<std::uint8_t>(mixed >> 24), static_cast<std::uint8_t>(mixed >> 16),
            static_cast<std::uint8_t>(mixed >> 8)};
}

// A default-like, B dense, C thick, D hair. Always the same numbers.
std::vector<Scene> makeScenes();

}  // namespace bench
