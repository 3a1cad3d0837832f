// All parameter values of one command, with the definitions they were read into.
//
// Lives on the stack of one command. It holds a definition of its own for each parameter, so
// commands on several threads read at the same time; the parameter objects are only looked at.
// What was checked out is checked in exactly once: by CheckInAllParams, or by the destructor when
// an exception passes before it.
#pragma once

#include <array>

#include "params/EffectParams.h"
#include "params/ParamGetter.h"
#include "params/ParamRows.h"

namespace streakfall {

class CheckedOutParams {
  public:
    // The getter must outlive this object.
    explicit CheckedOutParams(ParamGetter& getter) : getter_(getter) {}
    ~CheckedOutParams();
    CheckedOutParams(const CheckedOutParams&) = delete;
    CheckedOutParams& operator=(const CheckedOutParams&) = delete;

    // Reads the parameters in host order into this object and, when one is given, the record.
    // Ends at the first error, which it returns: the record's later fields keep their values. To
    // be called once.
    [[nodiscard]] PF_Err ReadAllParams(EffectParams* record);

    // Gives back every parameter that was read, also behind one that the host refuses. Returns
    // the first error, for the caller to drop when something else failed before.
    [[nodiscard]] PF_Err CheckInAllParams();

    // Writes every value that was read and not checked in yet into the settings file.
    void saveDefaults(const char* settingsPath) const;

  private:
    ParamGetter& getter_;
    std::array<PF_ParamDef, kParamCount> definitions_{};  // element i is of host order i + 1
    std::size_t held_ = 0;                                // how many of them are read
};

}  // namespace streakfall
