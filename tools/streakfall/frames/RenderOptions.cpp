#include "RenderOptions.h"

#include <cmath>
#include <initializer_list>
#include <utility>

#include "Failure.h"
#include "FrameList.h"
#include "PictureFile.h"
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

std::vector<int> framesOf(const RenderTexts& texts, bool inputIsNumbered) {
    if (!texts.frames.empty()) return parseFrameList(texts.frames);
    if (inputIsNumbered)
        failUsage("--input has a frame number: say which frames with --frames, as in -f 1-24");
    return {0};
}

void checkTimes(const RenderOptions& options) {
    for (const int frame : options.frames) (void)timeOf(frame, options.rate, "--frames");
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
      rate(parseFrameRate(texts.fps)),
      divisor(parseScale(texts.scale)),
      road(choose<standin::Road>(
          "--road", texts.road,
          {{"smart", standin::Road::smart}, {"legacy", standin::Road::legacy}})),
      existing(choose<Existing>("--existing", texts.existing,
                                {{"overwrite", Existing::kOverwrite},
                                 {"skip", Existing::kSkip},
                                 {"error", Existing::kError}})),
      progress(choose<ProgressStyle>("--progress", texts.progress,
                                     {{"auto", ProgressStyle::kAuto},
                                      {"bar", ProgressStyle::kBar},
                                      {"plain", ProgressStyle::kPlain},
                                      {"json", ProgressStyle::kJson},
                                      {"none", ProgressStyle::kNone}})),
      verbose(texts.verbose),
      dryRun(texts.dryRun) {
    if (texts.quiet) progress = ProgressStyle::kNone;
    if (texts.input.empty() == texts.size.empty())
        failUsage("give either --input with a picture or --size for an empty frame");
    if (!texts.input.empty()) input.emplace(texts.input, "--input");
    if (!texts.size.empty()) size = parseSize(texts.size, "--size");
    frames = framesOf(texts, input && input->hasNumber());
    if (frames.size() > 1 && !output.hasNumber())
        failUsage("--output: {} frames need a frame number in \"{}\"; write #### or %04d",
                  frames.size(), output.text());
    if (!texts.depth.empty())
        depth = choose<standin::Depth>("--depth", texts.depth,
                                       {{"8", standin::Depth::bits8},
                                        {"16", standin::Depth::bits16},
                                        {"32", standin::Depth::float32}});
    if (!input && !depth) depth = depthForOutput(output.fileFor(frames[0]));
    (void)describeOutput(output.fileFor(frames[0]), depth.value_or(standin::Depth::bits8));
    checkTimes(*this);
}

}  // namespace tool
