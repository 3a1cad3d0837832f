// What a picture depends on, in short: equal fingerprints, equal pictures. And the same in words.
#pragma once

#include <string>

#include "FrameRenderer.h"
#include "RenderPlan.h"

namespace tool {

// Of one frame: its values, time and layer; the content of its input, told by a digest; size,
// depth, layer, road and form; and the version of the effect. The same on every machine.
[[nodiscard]] std::string fingerprintOf(const FrameJob& job, const std::string& inputDigest,
                                        const RenderOptions& options, const RunForm& form,
                                        const std::string& effectVersion,
                                        const standin::Instance& instance);

// The values at that frame as --set takes them: those that are not the effect's defaults, and the
// seeds. "Taper=60; Random Seed=0".
[[nodiscard]] std::string lookInWords(int frame, const FrameRate& rate,
                                      const standin::Instance& instance);

// Of a file's bytes. Throws Failure (input).
[[nodiscard]] std::string digestOfFile(const std::string& path);

}  // namespace tool
