#include "params/ParamGetter.h"

namespace streakfall {

PF_Err GetParamFromArray::getParam(PF_ParamIndex index, PF_ParamDef* def) {
    *def = *params_[index];
    return PF_Err_NONE;
}

PF_Err GetParamFromArray::releaseParam(PF_ParamDef*) { return PF_Err_NONE; }

PF_Err GetParamByCheckout::getParam(PF_ParamIndex index, PF_ParamDef* def) {
    const PF_Err error =
        inData_->inter.checkout_param(inData_->effect_ref, index, inData_->current_time,
                                      inData_->time_step, inData_->time_scale, def);
    if (error != PF_Err_NONE) *def = {};
    return error;
}

PF_Err GetParamByCheckout::releaseParam(PF_ParamDef* def) {
    return inData_->inter.checkin_param(inData_->effect_ref, def);
}

}  // namespace streakfall
