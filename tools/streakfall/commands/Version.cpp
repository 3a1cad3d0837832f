#include "Version.h"

#include <fmt/format.h>

#include <cstdlib>
#include <string_view>

#include "Commit.h"
#include "EffectSession.h"
#include "Failure.h"
#include "PictureLibrary.h"

namespace tool {

namespace {

// As the effect chooses: it takes AVX2 where the processor has it, unless it is told not to.
const char* instructionSet() {
    const char* wanted = std::getenv("STREAKFALL_ISA");
    const bool told = wanted != nullptr && std::string_view(wanted) == "baseline";
    return __builtin_cpu_supports("avx2") && !told ? "AVX2" : "SSE2, the baseline";
}

std::string moduleText() {
    try {
        return locateModule("");
    } catch (const Failure& failure) {
        return failure.what();
    }
}

}  // namespace

std::string versionText() {
    return fmt::format(
        "streakfall {}\n"
        "commit          {} {}\n"
        "instruction set {}\n"
        "OpenImageIO     {}\n"
        "effect          {}",
        STREAKFALL_VERSION, kCommit, kCommitDate, instructionSet(), pictureLibraryVersion(),
        moduleText());
}

}  // namespace tool
