#include "RenderPlan.h"

#include <algorithm>
#include <filesystem>
#include <map>

#include "Failure.h"
#include "FrameList.h"
#include "PictureReader.h"

namespace tool {

namespace {

bool isThere(const std::string& path) {
    std::error_code ignored;
    return std::filesystem::exists(path, ignored);
}

// The nearest frame before, else behind, whose file is there.
std::optional<int> frameToHold(const std::vector<int>& present, int frame) {
    if (present.empty()) return std::nullopt;
    const auto behind = std::lower_bound(present.begin(), present.end(), frame);
    return behind == present.begin() ? *behind : *(behind - 1);
}

// Finds a picture for each frame.
class Inputs {
  public:
    explicit Inputs(const RenderOptions& options) : options_(options) {
        if (options.missing == Missing::kHold && options.input)
            present_ = options.input->framesOnDisk(kLastFrame);
    }

    [[nodiscard]] FrameJob jobFor(int frame) const {
        FrameJob job{frame, Source::kEmpty, "", options_.output.fileFor(frame)};
        if (!options_.input) return job;
        job.source = Source::kFile;
        job.input = options_.input->fileFor(frame);
        if (options_.missing == Missing::kError || isThere(job.input)) return job;
        if (options_.missing == Missing::kBlack) job.source = Source::kBlack;
        if (options_.missing == Missing::kSkip) job.source = Source::kNone;
        if (options_.missing == Missing::kHold)
            if (const auto held = frameToHold(present_, frame))
                job.input = options_.input->fileFor(*held);
        return job;
    }

  private:
    const RenderOptions& options_;
    std::vector<int> present_;
};

// The first file of the sequence, by number, whose head can be read; the path is left in `path`.
std::optional<PictureTraits> decidingTraits(const RenderOptions& options, std::string& path) {
    if (!options.input) return std::nullopt;
    std::vector<int> frames = options.input->framesOnDisk(kLastFrame);
    if (!options.input->hasNumber()) frames = {0};
    for (const int frame : frames) {
        path = options.input->fileFor(frame);
        try {
            return readTraits(path, options.reading);
        } catch (const Failure&) {
            continue;  // the frame tells it when its turn comes
        }
    }
    return std::nullopt;
}

// Only EXR and TIFF can be asked to be read so.
std::string readingInWords(const PictureTraits& traits, const ReadWishes& wishes) {
    if (!wishes.alpha || (traits.format != "openexr" && traits.format != "tiff")) return "";
    return fmt::format("input read as {} alpha, as asked",
                       *wishes.alpha == Alpha::kStraight ? "straight" : "premultiplied");
}

std::string plainPath(const std::string& path) {
    return std::filesystem::path(path).lexically_normal().string();
}

std::optional<FrameRate> rateOf(const PictureTraits& traits) {
    const auto found = traits.carried.find("FramesPerSecond");
    if (found == traits.carried.cend() || found->type() != OIIO::TypeRational) return std::nullopt;
    const int* parts = static_cast<const int*>(found->data());
    if (parts[0] <= 0 || parts[1] <= 0) return std::nullopt;
    return FrameRate{static_cast<A_u_long>(parts[0]), parts[1]};
}

// A frame that is written may not be the input of another one, which may be read before or after.
void checkOverlap(const std::vector<FrameJob>& jobs) {
    std::map<std::string, int> readers;
    for (const FrameJob& job : jobs)
        if (job.source == Source::kFile) readers.emplace(plainPath(job.input), job.frame);
    for (const FrameJob& job : jobs)
        if (const auto found = readers.find(plainPath(job.output)); found != readers.end())
            failUsage("--output: frame {} would overwrite {}, the input of frame {}", job.frame,
                      job.output, found->second);
}

}  // namespace

std::vector<FrameJob> planJobs(const RenderOptions& options) {
    const Inputs inputs(options);
    std::vector<FrameJob> jobs;
    for (const int frame : options.frames) {
        FrameJob job = inputs.jobFor(frame);
        std::error_code ignored;
        if (options.input &&
            std::filesystem::equivalent(options.input->fileFor(frame), job.output, ignored))
            failUsage("--output: frame {} would overwrite its own input {}", frame, job.input);
        jobs.push_back(std::move(job));
    }
    checkOverlap(jobs);
    return jobs;
}

RunForm planForm(const RenderOptions& options) {
    RunForm form;
    form.size = options.size;
    std::string file;
    const auto traits = decidingTraits(options, file);
    form.reason = !options.input ? "no input" : traits ? "from " + file : "no input can be read";
    if (traits) {
        form.size = {traits->width, traits->height};
        form.dropped = traits->dropped.empty() ? "" : file + ": left out: " + traits->dropped;
        form.depth = traits->depth;
        form.readAs = readingInWords(*traits, options.reading);
        form.rate = rateOf(*traits).value_or(FrameRate{});
    }
    if (options.depth) form.depth = *options.depth;
    if (options.depth && options.input) form.reason = "as asked";
    if (options.rate) form.rate = *options.rate;
    if (form.depth == standin::Depth::float32 && options.road == standin::Road::legacy)
        failUsage("--road legacy takes 8 or 16 bits; add --depth 16");

    OutputWishes wishes = options.wishes;
    const std::string& name = options.output.text();
    form.output = chooseOutputForm(name, form.depth, wishes);
    if (!traits) return form;
    // Half for half, unless a depth was asked for; an associated TIFF for an associated one.
    wishes.half =
        wishes.half || (traits->half && !options.depth && form.output.format == "openexr");
    if (!wishes.alpha && traits->associated && form.output.format == "tiff" &&
        traits->format == "tiff")
        wishes.alpha = Alpha::kAssociated;
    form.output = chooseOutputForm(name, form.depth, wishes);
    return form;
}

}  // namespace tool
