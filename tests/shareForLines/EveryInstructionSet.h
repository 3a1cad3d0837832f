// The instruction sets of this machine, for tests that must hold on each of them.
#pragma once

#include <string>
#include <vector>

#include "shareForLines/simd/InstructionSet.h"

namespace streakfall {

// The plain way first, the best last.
inline std::vector<InstructionSet> everyInstructionSet() {
    const InstructionSet usual = instructionSet();
    forceInstructionSet(static_cast<InstructionSet>(1000));  // limited to the best
    const int best = static_cast<int>(instructionSet());
    forceInstructionSet(usual);
    std::vector<InstructionSet> sets;
    for (int i = 0; i <= best; ++i) sets.push_back(static_cast<InstructionSet>(i));
    return sets;
}

// Draws by one set as long as it lives.
class WithInstructionSet {
  public:
    explicit WithInstructionSet(InstructionSet set) : usual(instructionSet()) {
        forceInstructionSet(set);
    }
    ~WithInstructionSet() { forceInstructionSet(usual); }
    WithInstructionSet(const WithInstructionSet&) = delete;
    WithInstructionSet& operator=(const WithInstructionSet&) = delete;

  private:
    InstructionSet usual;
};

}  // namespace streakfall
