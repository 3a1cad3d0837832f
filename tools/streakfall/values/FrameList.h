// The frames a command line asks for: "5", "1-10", "-8--5", "1-10x2" or "1-10:2" (every second),
// "10-1" (backwards), and several of these with commas between them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tool {

// Frame numbers go from -kLastFrame to kLastFrame, and a list holds at most kMostFrames of them.
inline constexpr int kLastFrame = 10'000'000;
inline constexpr int kMostFrames = 1'000'000;

// The frames in the order asked for, each once: a frame named again later is dropped there.
// Throws Failure (usage) that names the part it cannot read.
[[nodiscard]] std::vector<int> parseFrameList(std::string_view text);

// The count and the list in short: "24 frames: 1-24", "1 frame: 5".
[[nodiscard]] std::string describeFrames(const std::vector<int>& frames);

}  // namespace tool
