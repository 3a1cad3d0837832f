// A small effect that keeps all rules, for stubs that break one of them: each derives from it,
// overrides one operation, and ends with STUB_MODULE(Class).
//
// It shows the input with a bar across it, as wide as its one slider says.
#pragma once

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>

#include "hostapi/hostapi.h"

class GoodEffect {
  public:
    virtual ~GoodEffect() = default;

    virtual PF_Err run(PF_Cmd command, PF_InData* in, PF_OutData* out, PF_ParamDef** params,
                       PF_LayerDef* output, void* extra) {
        switch (command) {
            case PF_Cmd_ABOUT:
                std::snprintf(out->return_msg, sizeof out->return_msg, "a stub");
                return PF_Err_NONE;
            case PF_Cmd_PARAMS_SETUP:
                return addParams(in, out);
            case PF_Cmd_SEQUENCE_SETUP:
                return sequenceSetup(in, out);
            case PF_Cmd_SEQUENCE_FLATTEN:
                return flatten(in, out);
            case PF_Cmd_SEQUENCE_RESETUP:
                return sequenceSetup(in, out);
            case PF_Cmd_SEQUENCE_SETDOWN:
                if (sequenceOf(in, out)) in->utils->host_dispose_handle(sequenceOf(in, out));
                return PF_Err_NONE;
            case PF_Cmd_RENDER:
                return renderLegacy(in, &params[0]->u.ld, output);
            case PF_Cmd_SMART_PRE_RENDER:
                return plan(in, static_cast<PF_PreRenderExtra*>(extra));
            case PF_Cmd_SMART_RENDER:
                return renderSmart(in, static_cast<PF_SmartRenderExtra*>(extra));
            default:
                return PF_Err_NONE;
        }
    }

  protected:
    static constexpr A_long kSliderIndex = 1, kSliderId = 11;

    virtual PF_Err addParams(PF_InData* in, PF_OutData* out) {
        out->num_params = 2;
        return addSlider(in, "Thickness", kSliderId);
    }

    static PF_Err addSlider(PF_InData* in, const char* name, A_long id) {
        PF_ParamDef def{};
        std::snprintf(def.name, sizeof def.name, "%s", name);
        def.param_type = PF_Param_FLOAT_SLIDER;
        def.uu.id = id;
        def.u.fs_d.valid_max = def.u.fs_d.slider_max = 100;
        def.u.fs_d.dephault = 5;
        return in->inter.add_param(in->effect_ref, -1, &def);
    }

    // Eight bytes, the same live and flat; whatever was there before is dropped.
    virtual PF_Err sequenceSetup(PF_InData* in, PF_OutData* out) {
        const PF_Handle handle = in->utils->host_new_handle(8);
        if (!handle) return PF_Err_OUT_OF_MEMORY;
        void* const data = in->utils->host_lock_handle(handle);
        if (!data) {
            in->utils->host_dispose_handle(handle);
            return PF_Err_INTERNAL_STRUCT_DAMAGED;
        }
        std::memcpy(data, "stubdata", 8);
        in->utils->host_unlock_handle(handle);
        out->sequence_data = handle;
        return PF_Err_NONE;
    }

    virtual PF_Err flatten(PF_InData* in, PF_OutData* out) {
        const PF_Handle live = sequenceOf(in, out);
        const PF_Err code = sequenceSetup(in, out);
        if (!code && live) in->utils->host_dispose_handle(live);
        return code;
    }

    static PF_Handle sequenceOf(const PF_InData* in, const PF_OutData* out) {
        return in->sequence_data ? in->sequence_data : out->sequence_data;
    }

    struct Plan {
        double thickness;
    };

    virtual PF_Err plan(PF_InData* in, PF_PreRenderExtra* extra) {
        auto* const made = new Plan{};
        extra->output->pre_render_data = made;
        extra->output->delete_pre_render_data_func = [](void* data) {
            delete static_cast<Plan*>(data);
        };
        if (const PF_Err code = readSlider(in, made->thickness)) return code;
        PF_CheckoutResult result{};
        const PF_Err code =
            extra->cb->checkout_layer(in->effect_ref, 0, 0, &extra->input->output_request,
                                      in->current_time, in->time_step, in->time_scale, &result);
        extra->output->result_rect = result.result_rect;
        extra->output->max_result_rect = result.max_result_rect;
        return code;
    }

    virtual PF_Err renderSmart(PF_InData* in, PF_SmartRenderExtra* extra) {
        const auto* const plan = static_cast<Plan*>(extra->input->pre_render_data);
        if (!plan) return PF_Err_INTERNAL_STRUCT_DAMAGED;
        PF_EffectWorld* input = nullptr;
        PF_EffectWorld* output = nullptr;
        if (const PF_Err code = extra->cb->checkout_layer_pixels(in->effect_ref, 0, &input)) {
            return code;
        }
        if (const PF_Err code = extra->cb->checkout_output(in->effect_ref, &output)) return code;
        if (input && output) {
            if (const PF_Err code = render(in, *input, *output, plan->thickness)) return code;
        }
        return extra->cb->checkin_layer_pixels(in->effect_ref, 0);
    }

    virtual PF_Err renderLegacy(PF_InData* in, PF_EffectWorld* input, PF_EffectWorld* output) {
        double thickness = 0;
        if (const PF_Err code = readSlider(in, thickness)) return code;
        return render(in, *input, *output, thickness);
    }

    virtual PF_Err readSlider(PF_InData* in, double& value) {
        PF_ParamDef def{};
        const PF_Err code = in->inter.checkout_param(in->effect_ref, kSliderIndex, in->current_time,
                                                     in->time_step, in->time_scale, &def);
        if (code) return code;
        value = def.u.fs_d.value;
        return in->inter.checkin_param(in->effect_ref, &def);
    }

    virtual PF_Err render(PF_InData* in, PF_EffectWorld& input, PF_EffectWorld& output,
                          double thickness) {
        const PF_Err code = in->utils->copy(in->effect_ref, &input, &output, nullptr, nullptr);
        if (code) return code;
        for (A_long part = 1; part <= 3; ++part) {
            in->inter.progress(in->effect_ref, part * 20, 100);
            if (const PF_Err stopped = in->inter.abort(in->effect_ref)) return stopped;
        }
        paint(output, rowsOf(thickness, output));
        in->inter.progress(in->effect_ref, 100, 100);
        return PF_Err_NONE;
    }

    static A_long rowsOf(double thickness, const PF_EffectWorld& output) {
        return static_cast<A_long>(std::fmin(std::fmax(thickness, 0.0), output.height));
    }

    // Grey in the first rows, whatever the depth.
    virtual void paint(PF_EffectWorld& output, A_long rows) {
        for (A_long y = 0; y < rows; ++y) {
            std::memset(rowOf(output, y), 0x3C, pictureBytes(output));
        }
    }

    static std::uint8_t* rowOf(PF_EffectWorld& world, A_long y) {
        return reinterpret_cast<std::uint8_t*>(world.data) +
               static_cast<std::ptrdiff_t>(y) * world.rowbytes;
    }
    // Of a row, without padding; the stub paints in the depths that a world tells by itself.
    static std::size_t pictureBytes(const PF_EffectWorld& world) {
        const int pixel = world.world_flags & PF_WorldFlag_DEEP ? 8 : 4;
        return static_cast<std::size_t>(world.width) * static_cast<std::size_t>(pixel);
    }
};

#define STUB_MODULE(Class)                                                                         \
    extern "C" __attribute__((visibility("default"))) PF_Err EntryPointFunc(                       \
        PF_Cmd command, PF_InData* in, PF_OutData* out, PF_ParamDef** params, PF_LayerDef* output, \
        void* extra) {                                                                             \
        static Class effect;                                                                       \
        return effect.run(command, in, out, params, output, extra);                                \
    }
