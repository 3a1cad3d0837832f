// PendingErrorList: codes of failures that may be overcome on the way, such as a block that could
// not be had. A command that reports success with codes pending answers with the first of them.
//
// One list for the process, from first-call initialisation to shutdown. Each code carries the
// thread that recorded it, and a command sees only those of its own thread, so renders that run
// at once do not answer for each other. Room is fixed: recording never allocates, since it is
// what a failed allocation does.
#pragma once

#include <cstddef>

#include "hostapi/hostapi.h"

namespace AEUtil {

class PendingErrorList {
  public:
    // Does nothing when the list stands already. False when there was no memory for it; what the
    // allocation throws passes through.
    static bool create();
    static void destroy() noexcept;

    // How many codes of the calling thread are pending: those of a command that called the host,
    // which now calls back with another.
    static std::size_t count() noexcept;

    // Drops the calling thread's codes behind the first `kept`.
    static void clear(std::size_t kept = 0) noexcept;

    // The first code recorded on this thread behind `kept` others, 0 when there is none or no
    // list. Drops all behind those.
    static PF_Err takeFirst(std::size_t kept = 0) noexcept;
};

// Appends a code under the calling thread. Nothing happens when the list does not exist, the code
// is 0, or 256 codes are pending.
void RecordError(PF_Err code) noexcept;

}  // namespace AEUtil
