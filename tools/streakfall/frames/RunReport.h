// The file that --report writes: what became of each frame, totals, and the values, as JSON. Frames
// that the run did not come to are "missing".
#pragma once

#include <map>
#include <nlohmann/json.hpp>
#include <set>
#include <string>

#include "Progress.h"

namespace tool {

class RunReport {
  public:
    void add(const FrameJob& job, const MadeFrame& made);
    // Written whole or not at all. Throws Failure (output).
    void write(const std::string& path, const MakerShare& share, const Progress& progress,
               int exitCode) const;

  private:
    nlohmann::ordered_json frames_ = nlohmann::ordered_json::array();
    std::set<int> known_;  // the numbers in frames_
};

// The fingerprints of the frames that an earlier report tells as there, by their files; none when
// there is no such report.
[[nodiscard]] std::map<std::string, std::string> reportedFingerprints(const std::string& path);

}  // namespace tool
