// Looks as a person dials them, drawn at random: most lines thin, some to 50 pixels thick, opaque
// or not, in one colour or jittered, every third waved; fans, groups and repeats among them.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "FieldCases.h"
#include "params/EffectParams.h"

namespace bench {

struct DialledLook {
    std::string name;   // its number, two digits or more
    std::string words;  // what was dialled
    streakfall::EffectParams params;
};

// A look depends on the seed and its number alone.
std::vector<DialledLook> dialLooks(std::uint32_t seed, int count, const FrameSize& size);

}  // namespace bench
