// A signal that asks the program to end (from the keyboard, from the system, or because the
// terminal went away) is noted, and the render learns of it through the host's abort. So a file
// being written is finished or removed, never left half done.
#pragma once

namespace tool {

// Also ignores the signals of a closed pipe and of a file past its size limit: both come back as
// errors of the call, which leave no half file.
void watchSignals();

// The signal that came, or 0. Safe from any thread.
[[nodiscard]] int interruptSignal();

}  // namespace tool
