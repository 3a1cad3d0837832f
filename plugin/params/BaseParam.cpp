#include "params/BaseParam.h"

#include <cstring>

#include "params/ParamTable.h"

namespace streakfall {

BaseParam::BaseParam(RecordPlace place, const char* name, const PF_ParamDef& definition)
    : name_(name), def_(definition), hostIndex_(paramCounter++), place_(place) {}

PF_Err BaseParam::readValue(EffectParams* record, ParamGetter& getter, PF_ParamDef& def) const {
    if (place_.size == 0) return PF_Err_NONE;
    const PF_Err error = getter.getParam(hostIndex_, &def);
    if (error != PF_Err_NONE) return error;
    if (record != nullptr) {
        // Every kind's value stands at the front of the union; of a checkbox's the lowest byte is
        // taken, which comes first.
        std::memcpy(reinterpret_cast<char*>(record) + place_.offset, &def.u,
                    static_cast<std::size_t>(place_.size));
    }
    return PF_Err_NONE;
}

PF_Err BaseParam::releaseValue(ParamGetter& getter, PF_ParamDef& def) const {
    return place_.size == 0 ? PF_Err_NONE : getter.releaseParam(&def);
}

void BaseParam::saveDefault(const PF_ParamDef&, const char*) const {}

PF_ParamDef BaseParam::definitionFor(const PF_InData* inData, PF_ParamType type,
                                     std::int32_t id) const {
    PF_ParamDef def = def_;
    def.param_type = type;
    if (*name_ != '\0') inData->utils->ansi.strcpy(def.name, name_);
    def.uu.id = id;
    return def;
}

PF_Err BaseParam::append(const PF_InData* inData, PF_ParamDef& def) {
    constexpr PF_ParamIndex kAtTheEnd = -1;
    return inData->inter.add_param(inData->effect_ref, kAtTheEnd, &def);
}

}  // namespace streakfall
