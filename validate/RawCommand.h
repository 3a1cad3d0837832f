#pragma once

#include "host/Command.h"

namespace validate {

// Any command of an instance, in or out of turn, with records that are valid for it. Frames'
// commands are not sent this way (see renderFrame).
class RawCommand : public standin::Command {
  public:
    // As the instance stands. What the effect does to the sequence data is the caller's to follow,
    // through `in` and `out`.
    explicit RawCommand(standin::Instance& instance);

    // With the parameter array, an empty output, and for USER_CHANGED_PARAM the host index of the
    // parameter that changed.
    PF_Err send(PF_Cmd command, A_long changedIndex = 1);

    PF_Err addParam(const PF_ParamDef&) override { return PF_Err_NONE; }

  private:
    standin::Instance& instance_;
};

// Sequence setup of a second block, and its end: the code of the setup.
PF_Err setUpSecondSequence(standin::Instance& instance);

}  // namespace validate
