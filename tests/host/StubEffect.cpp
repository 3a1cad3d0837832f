#include "StubEffect.h"

#include <cstdio>
#include <cstring>

namespace {

StubEffect* current = nullptr;

PF_ParamDef named(const char* name, PF_ParamType type, A_long id) {
    PF_ParamDef def{};
    std::snprintf(def.name, sizeof def.name, "%s", name);
    def.param_type = type;
    def.uu.id = id;
    return def;
}

PF_Err addParams(const StubCall& call) {
    PF_ParamDef point = named("Point", PF_Param_POINT, StubEffect::kPoint);
    point.flags = PF_ParamFlag_SUPERVISE;
    point.u.td.x_dephault = 25 << 16;
    point.u.td.y_dephault = 50 << 16;
    PF_ParamDef slider = named("Slider", PF_Param_SLIDER, StubEffect::kSlider);
    slider.flags = PF_ParamFlag_CANNOT_INTERP;
    slider.u.sd.valid_max = 10;
    slider.u.sd.dephault = 3;
    PF_ParamDef defs[] = {point, named("Group", PF_Param_GROUP_START, StubEffect::kGroup), slider,
                          named("", PF_Param_GROUP_END, StubEffect::kGroupEnd)};
    for (PF_ParamDef& def : defs) {
        if (const PF_Err code = call.in->inter.add_param(call.in->effect_ref, -1, &def)) {
            return code;
        }
    }
    call.out->num_params = static_cast<A_long>(std::size(defs)) + 1;
    return PF_Err_NONE;
}

PF_Err plan(const StubCall& call) {
    auto& extra = call.extraAs<PF_PreRenderExtra>();
    PF_CheckoutResult result{};
    const PF_Err code = extra.cb->checkout_layer(
        call.in->effect_ref, 0, 0, &extra.input->output_request, call.in->current_time,
        call.in->time_step, call.in->time_scale, &result);
    extra.output->result_rect = result.result_rect;
    extra.output->max_result_rect = result.max_result_rect;
    return code;
}

void paint(const PF_EffectWorld& world) {
    for (A_long y = 0; y < world.height; ++y) {
        auto* row = reinterpret_cast<std::uint8_t*>(world.data) +
                    static_cast<std::ptrdiff_t>(y) * world.rowbytes;
        std::memset(row, 42, static_cast<std::size_t>(world.width) * 4);
    }
}

PF_Err renderSmart(const StubCall& call) {
    auto& extra = call.extraAs<PF_SmartRenderExtra>();
    PF_EffectWorld* input = nullptr;
    PF_EffectWorld* output = nullptr;
    if (const PF_Err code = extra.cb->checkout_layer_pixels(call.in->effect_ref, 0, &input)) {
        return code;
    }
    if (const PF_Err code = extra.cb->checkout_output(call.in->effect_ref, &output)) {
        return code;
    }
    if (output) {
        paint(*output);
    }
    return extra.cb->checkin_layer_pixels(call.in->effect_ref, 0);
}

}  // namespace

StubEffect::StubEffect() : module_(entry) { current = this; }

StubEffect::~StubEffect() { current = nullptr; }

PF_Err StubEffect::entry(PF_Cmd command, PF_InData* in, PF_OutData* out, PF_ParamDef** params,
                         PF_LayerDef* output, void* extra) {
    const StubCall call{in, out, params, output, extra};
    const auto own = current->actions_.find(command);
    return own != current->actions_.end() ? own->second(call) : usual(command, call);
}

PF_Err StubEffect::usual(PF_Cmd command, const StubCall& call) {
    switch (command) {
        case PF_Cmd_GLOBAL_SETUP:
            call.out->out_flags = PF_OutFlag_SEND_UPDATE_PARAMS_UI;
            return PF_Err_NONE;
        case PF_Cmd_PARAMS_SETUP:
            return addParams(call);
        case PF_Cmd_SEQUENCE_SETUP:
            call.out->sequence_data = call.in->utils->host_new_handle(8);
            return PF_Err_NONE;
        case PF_Cmd_SEQUENCE_SETDOWN:
            call.in->utils->host_dispose_handle(call.in->sequence_data);
            return PF_Err_NONE;
        case PF_Cmd_SMART_PRE_RENDER:
            return plan(call);
        case PF_Cmd_SMART_RENDER:
            return renderSmart(call);
        case PF_Cmd_RENDER:
            paint(*call.output);
            return PF_Err_NONE;
        default:
            return PF_Err_NONE;
    }
}
