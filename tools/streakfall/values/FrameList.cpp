#include "FrameList.h"

#include <cctype>
#include <cstdlib>
#include <unordered_set>

#include "Failure.h"
#include "Text.h"

namespace tool {

namespace {

struct Range {
    int first;
    int last;
    int step;  // at least 1, also when the range runs backwards
};

int parseFrame(std::string_view text, std::string_view part) {
    const auto frame = parseInt(text);
    if (!frame)
        failUsage(
            "--frames: cannot read \"{}\"; write 5, 1-10, -8--5, 1-10x2, 10-1 or a list "
            "of these with commas",
            part);
    if (*frame < -kLastFrame || *frame > kLastFrame)
        failUsage("--frames: {} is out of range, frames go from {} to {}", *frame, -kLastFrame,
                  kLastFrame);
    return *frame;
}

// A "-" between two numbers is the one that follows a digit; any other is a sign.
std::size_t findDash(std::string_view text) {
    for (std::size_t i = 1; i < text.size(); ++i)
        if (text[i] == '-' && std::isdigit(static_cast<unsigned char>(text[i - 1]))) return i;
    return std::string_view::npos;
}

Range parseRange(std::string_view part) {
    std::string_view ends = part;
    int step = 1;
    const auto stepAt = part.find_first_of("x:");
    if (stepAt != std::string_view::npos) {
        ends = part.substr(0, stepAt);
        step = parseFrame(part.substr(stepAt + 1), part);
        if (step < 1)
            failUsage("--frames: the step in \"{}\" must be 1 or more; write 10-1 to go backwards",
                      part);
    }
    const auto dash = findDash(ends);
    if (dash == std::string_view::npos) {
        if (stepAt != std::string_view::npos)
            failUsage("--frames: the step in \"{}\" needs a range, as in 1-10x2", part);
        const int frame = parseFrame(ends, part);
        return {frame, frame, 1};
    }
    return {parseFrame(ends.substr(0, dash), part), parseFrame(ends.substr(dash + 1), part), step};
}

}  // namespace

std::vector<int> parseFrameList(std::string_view text) {
    std::vector<int> frames;
    std::unordered_set<int> seen;
    for (std::string_view part : split(text, ',')) {
        part = trimmed(part);
        const Range range = parseRange(part);
        const int direction = range.first <= range.last ? 1 : -1;
        const int count = std::abs(range.last - range.first) / range.step + 1;
        if (count > kMostFrames - static_cast<int>(frames.size()))
            failUsage("--frames: \"{}\" asks for more than {} frames", part, kMostFrames);
        for (int i = 0; i < count; ++i) {
            const int frame = range.first + direction * i * range.step;
            if (seen.insert(frame).second) frames.push_back(frame);
        }
    }
    return frames;
}

std::string describeFrames(const std::vector<int>& frames) {
    if (frames.empty()) return "0 frames";
    std::string text = fmt::format("{} frame{}: ", frames.size(), frames.size() == 1 ? "" : "s");
    constexpr int kMostParts = 8;
    int parts = 0;
    for (std::size_t i = 0; i < frames.size(); ++parts) {
        if (parts == kMostParts) return text + ",...";
        std::size_t end = i + 1;
        while (end < frames.size() && frames[end] == frames[end - 1] + 1) ++end;
        if (parts > 0) text += ',';
        text += std::to_string(frames[i]);
        if (end - i > 1) text += '-' + std::to_string(frames[end - 1]);
        i = end;
    }
    return text;
}

}  // namespace tool
