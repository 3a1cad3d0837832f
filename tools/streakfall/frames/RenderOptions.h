// What `streakfall render` was asked to do, as written on the command line and then as checked.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "EffectSession.h"
#include "FilePattern.h"
#include "OutputForm.h"
#include "PictureReader.h"
#include "ProgressStyle.h"
#include "host/FrameRender.h"

namespace tool {

struct RenderTexts {
    std::string input, output, frames, chunk, size, depth, fps, layer;
    std::string scale = "1", road = "smart", existing = "overwrite", missing = "error";
    std::string alpha, compression, format, jobs, report, progress = "auto";
    std::string module;
    ParamTexts params;
    bool storedDefaults = false, half = false;
    bool quiet = false, verbose = false, dryRun = false;
};

enum class Existing { kOverwrite, kSkip, kError };
enum class Missing { kError, kBlack, kHold, kSkip };

struct RenderOptions {
    // Looks for the frames of the input when none are asked for. Throws Failure: usage that names
    // the option, or input when there are none.
    explicit RenderOptions(const RenderTexts& texts);

    // The output is standard output, one picture behind another.
    [[nodiscard]] bool streams() const { return !wishes.stream.empty(); }

    std::optional<FilePattern> input;  // none: opaque black of `size`
    FilePattern output;
    std::vector<int> frames;  // of the chunk
    std::string chunk;        // "I/N"; empty: all
    standin::LayerSize size{0, 0};
    ReadWishes reading;
    std::optional<standin::Depth> depth;  // none: the input's own
    std::optional<FrameRate> rate;        // none: the input's own, or 24
    OutputWishes wishes;
    int divisor = 1;  // of the picture's sides
    standin::Road road = standin::Road::smart;
    Existing existing = Existing::kOverwrite;
    Missing missing = Missing::kError;
    int jobs = 1;
    std::string report;  // file; empty: none
    ProgressStyle progress = ProgressStyle::kAuto;
    bool storedDefaults = false;
    bool verbose = false;
    bool dryRun = false;
};

// "24", "29.97" (which means 30000/1001) or "30000/1001".
[[nodiscard]] FrameRate parseFrameRate(std::string_view text);

// "1920x1080", sides from 1 to what a host's frame may have. `option` is named in the failure.
[[nodiscard]] standin::LayerSize parseSize(std::string_view text, std::string_view option);

}  // namespace tool
