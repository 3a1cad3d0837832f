// Where parameter values come from.
//
// A getter lives on the stack of the operation that uses it and is used by that operation's
// thread only. Definitions belong to the caller: the getter fills them and gives them back.
#pragma once

#include "hostapi/hostapi.h"

namespace streakfall {

class ParamGetter {
  public:
    virtual ~ParamGetter() = default;

    // Fills the definition of host index `index`. On an error the definition is all zero and
    // nothing has to be released.
    [[nodiscard]] virtual PF_Err getParam(PF_ParamIndex index, PF_ParamDef* def) = 0;
    // Gives back what getParam filled.
    [[nodiscard]] virtual PF_Err releaseParam(PF_ParamDef* def) = 0;
};

// The array that a command came with. It must hold every host index of the table.
class GetParamFromArray final : public ParamGetter {
  public:
    explicit GetParamFromArray(PF_ParamDef* const* params) : params_(params) {}

    PF_Err getParam(PF_ParamIndex index, PF_ParamDef* def) override;
    PF_Err releaseParam(PF_ParamDef* def) override;

  private:
    PF_ParamDef* const* params_;
};

// The host's checkout, at the time of the command.
class GetParamByCheckout final : public ParamGetter {
  public:
    explicit GetParamByCheckout(const PF_InData* inData) : inData_(inData) {}

    PF_Err getParam(PF_ParamIndex index, PF_ParamDef* def) override;
    PF_Err releaseParam(PF_ParamDef* def) override;

  private:
    const PF_InData* inData_;
};

}  // namespace streakfall
