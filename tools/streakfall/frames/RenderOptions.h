// What `streakfall render` was asked to do, as written on the command line and then as checked.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "EffectSession.h"
#include "FilePattern.h"
#include "Progress.h"
#include "host/FrameRender.h"

namespace tool {

struct RenderTexts {
    std::string input, output, frames, size, depth, fps = "24";
    std::string scale = "1", road = "smart", existing = "overwrite", progress = "auto";
    std::string module;
    ParamTexts params;
    bool storedDefaults = false;
    bool quiet = false, verbose = false, dryRun = false;
};

enum class Existing { kOverwrite, kSkip, kError };

struct RenderOptions {
    // Throws Failure (usage) that names the option.
    explicit RenderOptions(const RenderTexts& texts);

    std::optional<FilePattern> input;  // none: opaque black of `size`
    FilePattern output;
    std::vector<int> frames;
    standin::LayerSize size{0, 0};
    std::optional<standin::Depth> depth;  // none: the input's own
    FrameRate rate;
    int divisor = 1;  // of the picture's sides
    standin::Road road = standin::Road::smart;
    Existing existing = Existing::kOverwrite;
    ProgressStyle progress = ProgressStyle::kAuto;
    bool verbose = false;
    bool dryRun = false;
};

// "24", "29.97" (which means 30000/1001) or "30000/1001".
[[nodiscard]] FrameRate parseFrameRate(std::string_view text);

// "1920x1080", sides from 1 to what a host's frame may have. `option` is named in the failure.
[[nodiscard]] standin::LayerSize parseSize(std::string_view text, std::string_view option);

}  // namespace tool
