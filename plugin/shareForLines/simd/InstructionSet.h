// Which instruction set the drawing uses. Chosen once per process by what the processor can do;
// the pictures are the same bits in every setting.
#pragma once

namespace streakfall {

enum class InstructionSet { kBaseline, kAvx2 };

// The best set of this processor, or a lower one when the environment variable STREAKFALL_ISA
// names it: "baseline" or "avx2". Any thread.
InstructionSet instructionSet();

// For tests: sets what instructionSet answers from now on, limited to what the processor has.
void forceInstructionSet(InstructionSet set);

}  // namespace streakfall
