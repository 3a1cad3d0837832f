#include "RenderOptions.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <thread>
#include <utility>

#include "Failure.h"
#include "FrameList.h"
#include "Text.h"

namespace tool {

namespace {

template <class Choice>
Choice choose(std::string_view option, const std::string& text,
              std::initializer_list<std::pair<const char*, Choice>> choices) {
    std::vector<std::string> names;
    for (const auto& [name, choice] : choices) {
        if (text == name) return choice;
        names.emplace_back(name);
    }
    failUsage("{}: \"{}\" is none of {}", option, text, quotedList(names));
}

// 1 or 1/N.
int parseScale(std::string_view text) {
    constexpr int kMostReduced = 99;
    const auto parts = split(text, '/');
    const auto divisor = parts.size() == 2 && trimmed(parts[0]) == "1" ? parseInt(parts[1])
                         : trimmed(text) == "1"                        ? std::optional(1)
                                                                       : std::nullopt;
    if (!divisor || *divisor < 1 || *divisor > kMostReduced)
        failUsage("--scale: cannot read \"{}\"; write 1 or 1/N with N from 1 to {}", text,
                  kMostReduced);
    return *divisor;
}

std::vector<int> framesOf(const RenderTexts& texts, const std::optional<FilePattern>& input) {
    if (!texts.frames.empty()) return parseFrameList(texts.frames);
    if (!input || !input->hasNumber()) return {0};
    std::vector<int> found = input->framesOnDisk(kLastFrame);
    if (found.empty())
        fail(Exit::kInput, "--input: there is no file {}; without --frames all that are there",
             input->text());
    return found;
}

// The I-th of N parts whose lengths differ by one at most.
struct Chunk {
    int part = 1, parts = 1;

    [[nodiscard]] std::vector<int> of(const std::vector<int>& frames) const {
        const auto edge = [&](int before) {
            return frames.begin() + static_cast<std::ptrdiff_t>(frames.size()) * before / parts;
        };
        return {edge(part - 1), edge(part)};
    }
};

Chunk parseChunk(std::string_view text) {
    if (text.empty()) return {};
    const auto parts = split(text, '/');
    const auto number = [&](std::size_t i) { return parseInt(parts[i]).value_or(0); };
    if (parts.size() != 2 || number(0) < 1 || number(1) < number(0))
        failUsage("--chunk: cannot read \"{}\"; write I/N, part I from 1 to N, as in 2/8", text);
    return {number(0), number(1)};
}

void checkTimes(const RenderOptions& options) {
    for (const int frame : options.frames)
        (void)timeOf(frame, options.rate.value_or(FrameRate{}), "--frames");
}

int parseJobs(std::string_view text) {
    constexpr int kMostJobs = 256;
    const int cores = static_cast<int>(std::max(1u, std::thread::hardware_concurrency()));
    const int jobs = text.empty() ? std::min(cores, kMostJobs) : parseInt(text).value_or(0);
    if (jobs < 1 || jobs > kMostJobs)
        failUsage("--jobs: \"{}\" is no number from 1 to {}", text, kMostJobs);
    return jobs;
}

// "straight" and "premultiplied" hold for the files that are read and those that are written;
// "IN:OUT", either of which may be empty, for each of them apart.
std::optional<Alpha> parseAlpha(const std::string& text) {
    if (text.empty()) return std::nullopt;
    return choose<Alpha>("--alpha", text,
                         {{"straight", Alpha::kStraight}, {"premultiplied", Alpha::kAssociated}});
}

std::optional<Alpha> inputAlphaOf(const std::string& text) {
    return parseAlpha(text.substr(0, text.find(':')));
}

std::optional<Alpha> outputAlphaOf(const std::string& text) {
    const auto colon = text.find(':');
    return parseAlpha(colon == std::string::npos ? text : text.substr(colon + 1));
}

OutputWishes wishesOf(const RenderTexts& texts) {
    OutputWishes wishes;
    const bool streams = texts.output == "-";
    if (streams)
        wishes.stream =
            choose<std::string>("--format", texts.format, {{"png", "png"}, {"rgba", "rgba"}});
    else if (!texts.format.empty())
        failUsage("--format is for a stream, as in -o - --format {}", texts.format);
    wishes.alpha = outputAlphaOf(texts.alpha);
    wishes.half = texts.half;
    wishes.compression = texts.compression;
    return wishes;
}

}  // namespace

FrameRate parseFrameRate(std::string_view text) {
    constexpr double kMostFps = 1000;
    constexpr int kNtscStep = 1001;
    const auto parts = split(text, '/');
    if (parts.size() == 2) {
        const auto scale = parseInt(parts[0]);
        const auto step = parseInt(parts[1]);
        if (scale && step && *scale > 0 && *step > 0) return {static_cast<A_u_long>(*scale), *step};
    }
    const auto fps = parseNumber(text);
    if (parts.size() > 1 || !fps || !(*fps >= 0.001) || *fps > kMostFps)
        failUsage("--fps: cannot read \"{}\"; write 24, 29.97 or 30000/1001", text);
    if (*fps == std::floor(*fps)) return {static_cast<A_u_long>(*fps), 1};
    // 23.976, 29.97, 59.94: what is written is short for a multiple of 1000 / 1001.
    const double whole = std::round(*fps * kNtscStep / 1000);
    if (std::abs(whole * 1000 / kNtscStep - *fps) < 0.005)
        return {static_cast<A_u_long>(whole * 1000), kNtscStep};
    return {static_cast<A_u_long>(std::round(*fps * 1000)), 1000};
}

standin::LayerSize parseSize(std::string_view text, std::string_view option) {
    const auto parts = split(text, 'x');
    const auto side = [&](std::size_t i) { return parseInt(parts[i]).value_or(0); };
    const auto fits = [](int length) { return length >= 1 && length <= kPFMaxWorldSide; };
    if (parts.size() != 2 || !fits(side(0)) || !fits(side(1)))
        failUsage("{}: cannot read \"{}\"; write WIDTHxHEIGHT, as in 1920x1080, sides from 1 to {}",
                  option, text, kPFMaxWorldSide);
    return {side(0), side(1)};
}

RenderOptions::RenderOptions(const RenderTexts& texts)
    : output(texts.output, "--output"),
      reading{texts.layer, inputAlphaOf(texts.alpha)},
      wishes(wishesOf(texts)),
      divisor(parseScale(texts.scale)),
      road(choose<standin::Road>(
          "--road", texts.road,
          {{"smart", standin::Road::smart}, {"legacy", standin::Road::legacy}})),
      existing(choose<Existing>("--existing", texts.existing,
                                {{"overwrite", Existing::kOverwrite},
                                 {"skip", Existing::kSkip},
                                 {"error", Existing::kError}})),
      missing(choose<Missing>("--missing", texts.missing,
                              {{"error", Missing::kError},
                               {"black", Missing::kBlack},
                               {"hold", Missing::kHold},
                               {"skip", Missing::kSkip}})),
      jobs(parseJobs(texts.jobs)),
      report(texts.report),
      progress(choose<ProgressStyle>("--progress", texts.progress,
                                     {{"auto", ProgressStyle::kAuto},
                                      {"bar", ProgressStyle::kBar},
                                      {"plain", ProgressStyle::kPlain},
                                      {"json", ProgressStyle::kJson},
                                      {"none", ProgressStyle::kNone}})),
      storedDefaults(texts.storedDefaults),
      verbose(texts.verbose),
      dryRun(texts.dryRun) {
    if (texts.quiet) progress = ProgressStyle::kNone;
    if (texts.input.empty() == texts.size.empty())
        failUsage("give either --input with a picture or --size for an empty frame");
    if (!texts.input.empty()) input.emplace(texts.input, "--input");
    if (!texts.size.empty()) size = parseSize(texts.size, "--size");
    if (!texts.fps.empty()) rate = parseFrameRate(texts.fps);
    if (!texts.depth.empty())
        depth = choose<standin::Depth>("--depth", texts.depth,
                                       {{"8", standin::Depth::bits8},
                                        {"16", standin::Depth::bits16},
                                        {"32", standin::Depth::float32}});
    // Before the disk is asked for frames: these are usage, whatever is there.
    (void)chooseOutputForm(output.text(), depth.value_or(standin::Depth::bits8), wishes);
    const Chunk part = parseChunk(texts.chunk);
    frames = framesOf(texts, input);
    if (frames.size() > 1 && !output.hasNumber() && !streams())
        failUsage("--output: {} frames need a frame number in \"{}\"; write #### or %04d",
                  frames.size(), output.text());
    frames = part.of(frames);
    chunk = texts.chunk;
    if (!input && !depth) depth = depthForOutput(output.text(), wishes);
    checkTimes(*this);
}

}  // namespace tool
