#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace validate {

class Report;

// The module that is checked, and what a person may choose about the checking. A value.
struct Subject {
    std::string modulePath;
    std::uint32_t seed = 1;  // of everything random in the checks
    int soakFrames = 20000;  // of the long run
    // Multiplies the time limits; the usual one makes up for builds with internal checks or
    // sanitizers.
    double patience = kUsualPatience;

#ifdef STREAKFALL_CHECKS
    static constexpr double kUsualPatience = 20;
#else
    static constexpr double kUsualPatience = 1;
#endif
};

// One thing that must hold for an effect module. Runs in a process of its own, so it may leave the
// module in any state, and may crash or hang.
struct Check {
    const char* name;      // "group.what_holds"
    int level;             // 1 (at once) to 10 (all there is); a level includes those below it
    int seconds;           // limit of its process
    const char* sentence;  // what it asserts
    void (*run)(const Subject&, Report&);
};

inline constexpr int kHighestLevel = 10;

// All checks, by level, in the order in which they are run.
std::span<const Check> allChecks();

}  // namespace validate
