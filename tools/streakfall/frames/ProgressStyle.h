// How a run tells what it does; see Progress.h.
#pragma once

namespace tool {

enum class ProgressStyle { kAuto, kBar, kPlain, kJson, kNone };

}  // namespace tool
