// The four fixed line lists that drawing is timed on.
#pragma once

#include <string>
#include <vector>

#include "lines/LineRecord.h"

namespace bench {

struct Scene {
    std::string name;
    int width, height;
    double ramp;  // in and out ramp, as a part of each line
    std::vector<streakfall::LineRecord> lines;
};

// A default-like, B dense, C thick, D hair. Always the same numbers.
std::vector<Scene> makeScenes();

}  // namespace bench
