// The effect's version, which the host, the settings file and the about text all show.
#pragma once

#include "hostapi/hostapi.h"

namespace streakfall {

inline constexpr char kProductName[] = "Q_Streakfall";
inline constexpr int kVersionMajor = 1;
inline constexpr int kVersionMinor = 5;
inline constexpr int kVersionBugFix = 2;
inline constexpr char kVersionStage[] = "Release";
inline constexpr int kVersionBuild = 3;

// What global setup announces; the property list repeats it.
inline constexpr A_u_long kPackedVersion =
    PF_VERSION(kVersionMajor, kVersionMinor, kVersionBugFix, PF_Stage_RELEASE, kVersionBuild);
static_assert(kPackedVersion == 693763);

}  // namespace streakfall
