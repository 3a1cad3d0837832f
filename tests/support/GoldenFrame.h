// Golden frames: parameter sets with the lines and line buffers that must come out of them. They
// are the text files of tests/golden:
//
//   key value...   a frame's number, a parameter's raw value, or a depth's hash and size
//   lines N        followed by N records: x0 y0 x1 y1 thickness axialPosition seed
//   # ...          comment
//
// For some, NAME.argb8 beside it is the 8-bit line buffer itself.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "effect/ConvertedParams.h"
#include "lines/LineRecord.h"

namespace golden {

struct Frame {
    std::string name;
    std::vector<std::byte> pixels8;  // tight rows; empty when there is no such file
    streakfall::FrameInfo info;
    streakfall::EffectParams params;  // raw, defaults where the file names no value
    // What the file names, by parameter id: the raw numbers as a host would hand them out.
    std::map<std::int32_t, std::vector<double>> named;
    std::array<std::uint64_t, 3> hashes{};  // FNV-1a of the line buffer, tight rows: 8, 16, float
    std::vector<streakfall::LineRecord> lines;
};

// The value of every parameter as the host opens it; the points at 0.
streakfall::EffectParams defaultParams();

// All frames of the folder, by name. Throws std::runtime_error that names the file and the line
// when one cannot be read, or when there is none.
const std::vector<Frame>& frames();

// The frame whose name begins so.
const Frame& frame(const std::string& prefix);

}  // namespace golden
