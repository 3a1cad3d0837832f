// What a run will do: its frames with their files, and what holds for all of them.
#pragma once

#include <string>
#include <vector>

#include "Picture.h"
#include "RenderOptions.h"

namespace tool {

enum class Source {
    kEmpty,  // opaque black of the size asked for
    kFile,
    kBlack,  // the input is missing: opaque black of the sequence's size
    kNone,   // the input is missing: no frame
};

// One frame of a run.
struct FrameJob {
    int frame;
    Source source;
    std::string input;   // the file; with Source::kFile not always its own, see Missing::kHold
    std::string output;  // "-" for a stream
};

// What is the same for all frames of a run, on whatever part of the frames it works: it depends on
// the sequence as it lies on the disk, not on the frames asked for.
struct RunForm {
    standin::Depth depth = standin::Depth::bits8;
    FrameRate rate;
    OutputForm output;
    // Of the file that decided, or as asked for without input; 0 when neither tells it.
    standin::LayerSize size{0, 0};
    std::string reason;   // who decided the depth, in words
    std::string dropped;  // layers of that file that are not used
    std::string readAs;   // how its alpha was asked to be read, in words; may be empty
};

// In the order asked for. Throws Failure (usage) for a frame that would overwrite its input.
[[nodiscard]] std::vector<FrameJob> planJobs(const RenderOptions& options);

// Throws Failure (usage).
[[nodiscard]] RunForm planForm(const RenderOptions& options);

}  // namespace tool
