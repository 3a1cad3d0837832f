#include "shareForLines/simd/InstructionSet.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <cstring>

namespace streakfall {
namespace {

InstructionSet bestSet() {
    return __builtin_cpu_supports("avx2") ? InstructionSet::kAvx2 : InstructionSet::kBaseline;
}

InstructionSet firstChoice() {
    const char* wanted = std::getenv("STREAKFALL_ISA");
    if (wanted != nullptr && std::strcmp(wanted, "baseline") == 0) {
        return InstructionSet::kBaseline;
    }
    return bestSet();
}

// -1 until the first question. Two threads that ask first store the same answer.
std::atomic<int> chosen{-1};

}  // namespace

InstructionSet instructionSet() {
    int set = chosen.load(std::memory_order_relaxed);
    if (set < 0) {
        set = static_cast<int>(firstChoice());
        chosen.store(set, std::memory_order_relaxed);
    }
    return static_cast<InstructionSet>(set);
}

void forceInstructionSet(InstructionSet set) {
    chosen.store(static_cast<int>(std::min(set, bestSet())), std::memory_order_relaxed);
}

}  // namespace streakfall
