// One parameter of the effect: how it gets to the host, where its value goes in EffectParams, and
// how it is written into the settings file.
//
// An object stands for one row of the table, is owned by it and never changes after the build, so
// any thread may use it. Each read lands in a definition that the caller owns.
#pragma once

#include "params/EffectParams.h"
#include "params/ParamGetter.h"
#include "params/ParamRows.h"

namespace streakfall {

class BaseParam {
  public:
    virtual ~BaseParam() = default;
    BaseParam(const BaseParam&) = delete;
    BaseParam& operator=(const BaseParam&) = delete;

    // Fetches the value into `def` and, when a record is given, into its field. An error leaves
    // the record alone. Groups have no value and ask for none.
    [[nodiscard]] virtual PF_Err readValue(EffectParams* record, ParamGetter& getter,
                                           PF_ParamDef& def) const;
    // Gives back what readValue fetched into `def`.
    [[nodiscard]] virtual PF_Err releaseValue(ParamGetter& getter, PF_ParamDef& def) const;
    // Appends the parameter to the host's list under the fixed number `id`. The starting value
    // comes from the settings file; a null path means the built-in default.
    [[nodiscard]] virtual PF_Err addToHost(const PF_InData* inData, std::int32_t id,
                                           const char* settingsPath) const = 0;
    // Writes the value in `def`, which readValue filled, into the settings file.
    virtual void saveDefault(const PF_ParamDef& def, const char* settingsPath) const;

    const char* name() const { return name_; }
    std::int32_t paramId() const { return paramId_; }
    PF_ParamIndex hostIndex() const { return hostIndex_; }

  protected:
    // `name` must be static text. `definition` is what each copy for the host starts as.
    BaseParam(RecordPlace place, const char* name, const PF_ParamDef& definition);

    // A definition of `type` that starts as the template, with name and id.
    PF_ParamDef definitionFor(const PF_InData* inData, PF_ParamType type, std::int32_t id) const;
    static PF_Err append(const PF_InData* inData, PF_ParamDef& def);

  private:
    friend void buildParamTable(const PF_InData* inData);

    const char* name_;
    PF_ParamDef def_;
    std::int32_t paramId_ = 0;  // set once, by the build
    PF_ParamIndex hostIndex_;
    RecordPlace place_;
};

}  // namespace streakfall
