// A signal that asks the program to end (from the keyboard, from the system, or because the
// terminal went away) is noted, and the effect learns of it at its next question whether the user
// cancels. So a file being written is finished or removed, never left half done. A second signal
// ends the program at once; temporary files are removed even then.
#pragma once

namespace tool {

// Also ignores the signal of a file past its size limit: it comes back as an error of the write,
// which leaves no half file.
void watchSignals();

// The signal that came, or 0. Safe from any thread.
[[nodiscard]] int interruptSignal();

}  // namespace tool
