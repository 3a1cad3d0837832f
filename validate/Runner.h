#pragma once

#include <string>
#include <vector>

#include "validate/Check.h"

namespace validate {

// How a check came out. A value.
struct CheckResult {
    std::vector<std::string> findings;  // empty: passed
    std::vector<std::string> notes;
    double seconds = 0;

    bool passed() const { return findings.empty(); }
};

// Runs the check in a process of its own. A crash, an exit before the end and a run past the time
// limit are findings that name the place where the check stood. The calling process must have one
// thread only. Throws std::runtime_error when the system gives no process.
CheckResult runCheck(const Check& check, const Subject& subject);

}  // namespace validate
