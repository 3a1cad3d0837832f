// The fields of lines whose generation is timed: the effect's own defaults with a few values
// changed.
#pragma once

#include <vector>

#include "effect/ConvertedParams.h"

namespace bench {

struct FieldCase {
    struct Setting {
        const char* name;  // of the parameter
        double value;      // as the panel shows it
    };
    const char* name;
    std::vector<Setting> settings;
};

// Plain, grouped, repeated and fanned.
const std::vector<FieldCase>& fieldCases();

struct FrameSize {
    const char* name;
    int width, height;
};
inline constexpr FrameSize kFrameSizes[] = {{"1920x1080", 1920, 1080}, {"3840x2160", 3840, 2160}};

streakfall::FrameInfo frameInfo(const FrameSize& size);

// Every parameter as the host opens it on a layer of this size.
streakfall::EffectParams defaultParams(const FrameSize& size);

// What the host would hand the effect for this field, brought to drawing units.
streakfall::ConvertedParams paramsOf(const FieldCase& field, const FrameSize& size);

}  // namespace bench
