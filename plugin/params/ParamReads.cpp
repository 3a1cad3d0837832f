#include "params/ParamReads.h"

#include "params/ParamTable.h"

namespace streakfall {

CheckedOutParams::~CheckedOutParams() {
    // Only an exception leaves something; its code goes before that of the check-in.
    if (held_ != 0) static_cast<void>(CheckInAllParams());
}

PF_Err CheckedOutParams::ReadAllParams(EffectParams* record) {
    while (held_ < kParamCount) {
        const BaseParam* param = paramsByIndex[held_ + 1];
        if (param == nullptr) break;
        const PF_Err error = param->readValue(record, getter_, definitions_[held_]);
        if (error != PF_Err_NONE) return error;
        ++held_;
    }
    return PF_Err_NONE;
}

PF_Err CheckedOutParams::CheckInAllParams() {
    PF_Err first = PF_Err_NONE;
    for (std::size_t i = 0; i < held_; ++i) {
        const PF_Err error = paramsByIndex[i + 1]->releaseValue(getter_, definitions_[i]);
        if (first == PF_Err_NONE) first = error;
    }
    held_ = 0;
    return first;
}

void CheckedOutParams::saveDefaults(const char* settingsPath) const {
    for (std::size_t i = 0; i < held_; ++i) {
        paramsByIndex[i + 1]->saveDefault(definitions_[i], settingsPath);
    }
}

}  // namespace streakfall
