// Progress of one render towards the host, out of 100, and the host's wish to stop.
#pragma once

#include "hostapi/hostapi.h"

namespace streakfall {

class HostProgress {
  public:
    explicit HostProgress(const PF_InData& inData) : inData_(inData) {}

    // The host's answer is dropped: only abort() ends a render.
    void report(A_long done) const { inData_.inter.progress(inData_.effect_ref, done, 100); }

    // Not 0 when the render shall stop with that code.
    [[nodiscard]] PF_Err abort() const { return inData_.inter.abort(inData_.effect_ref); }

  private:
    const PF_InData& inData_;
};

}  // namespace streakfall
