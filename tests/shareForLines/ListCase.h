// Frames for the tests: lists of lines, with all that they are painted with but the depth.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "Chance.h"
#include "lines/LineRecord.h"
#include "shareForLines/path/ColorJitter.h"
#include "shareForLines/path/Stroke.h"

namespace streakfall {

struct ListCase {
    int width = 0, height = 0;
    std::vector<LineRecord> lines;
    std::uint8_t red = 0, green = 0, blue = 0;
    double opacity = 1.0;
    JitterAmounts amounts{};  // all 0: one colour
    std::function<void(StrokeForm&)> setForm;

    // Its list, in the form in which a test could have it, and what the form is.
    std::string words() const;
};

// Drops the lines behind those that dab by dab take `pixels` visits of pixels of the canvas. A
// guess, right within a factor of a few; the first line stays.
void limitWork(ListCase& c, double pixels);

// By the generator of fields, all its values random.
ListCase randomField(std::uint32_t seed, int width, int height);

// Synthetic: bundles, fans, dots and lines all over, of any thickness, in one list.
ListCase randomList(std::uint32_t seed, int width, int height);

// Opaque lines of many colours that cover the canvas several times: most of each is hidden by those
// behind it in the list.
ListCase randomCover(std::uint32_t seed, int width, int height);

// The same of thick steep lines side by side, whose hollow dabs may leave pixels open.
ListCase randomSteepCover(std::uint32_t seed, int width, int height);

}  // namespace streakfall
