// The records a command comes with: the two big ones of every command, and those of the smart
// render road. Also the entry point's type.
#pragma once

#include "hostapi/callbacks.h"
#include "hostapi/suites.h"

struct PF_InData {
    PF_InteractCallbacks inter;
    PF_UtilCallbacks* utils;
    PF_ProgPtr effect_ref;
    PF_Quality quality;
    PF_SpecVersion version;
    A_long serial_num;
    A_long appl_id;
    A_long num_params;
    A_long reserved;
    A_long what_cpu;
    A_long what_fpu;
    A_long current_time;
    A_long time_step;
    A_long total_time;
    A_long local_time_step;
    A_u_long time_scale;
    PF_Field field;
    PF_Fixed shutter_angle;
    A_long width;
    A_long height;
    PF_LRect extent_hint;
    A_long output_origin_x;
    A_long output_origin_y;
    PF_RationalScale downsample_x;
    PF_RationalScale downsample_y;
    PF_RationalScale pixel_aspect_ratio;
    A_long in_flags;
    PF_Handle global_data;
    PF_Handle sequence_data;
    PF_Handle frame_data;
    A_long start_sampL;
    A_long dur_sampL;
    A_long total_sampL;
    PF_SoundWorld src_snd;
    SPBasicSuite* pica_basicP;
    A_long pre_effect_source_origin_x;
    A_long pre_effect_source_origin_y;
    PF_Fixed shutter_phase;
};

struct PF_OutData {
    A_u_long my_version;
    A_char name[32];
    PF_Handle global_data;
    A_long num_params;
    PF_Handle sequence_data;
    A_long flat_sdata_size;
    PF_Handle frame_data;
    A_long width;
    A_long height;
    PF_Point origin;
    PF_OutFlags out_flags;
    A_char return_msg[256];
    A_long start_sampL;
    A_long dur_sampL;
    PF_SoundWorld dest_snd;
    PF_OutFlags2 out_flags2;
};

struct PF_RenderRequest {
    PF_LRect rect;
    PF_Field field;
    PF_ChannelMask channel_mask;
    PF_Boolean preserve_rgb_of_zero_alpha;
    A_char unused[3];
    A_long reserved[4];
};

struct PF_CheckoutResult {
    PF_LRect result_rect;
    PF_LRect max_result_rect;
    PF_RationalScale par;
    PF_Boolean solid;
    PF_Boolean reservedB[3];
    A_long ref_width;
    A_long ref_height;
    A_long reserved[6];
};

// Older hosts end after `bitdepth`: nothing behind it may be read.
struct PF_PreRenderInput {
    PF_RenderRequest output_request;
    A_short bitdepth;
    const void* gpu_data;
    A_long what_gpu;
    A_u_long device_index;
};

struct PF_PreRenderOutput {
    PF_LRect result_rect;
    PF_LRect max_result_rect;
    PF_Boolean solid;
    PF_Boolean reserved;
    PF_RenderOutputFlags flags;
    // The host's once the command has returned; it calls the deleter, or free when that is null.
    void* pre_render_data;
    void (*delete_pre_render_data_func)(void* pre_render_data);
};

struct PF_PreRenderCallbacks {
    PF_Err (*checkout_layer)(PF_ProgPtr effect_ref, PF_ParamIndex index, A_long checkout_id,
                             const PF_RenderRequest* req, A_long what_time, A_long time_step,
                             A_u_long time_scale, PF_CheckoutResult* result);
    PF_Err (*GuidMixInPtr)(PF_ProgPtr effect_ref, A_u_long size, const void* data);
};

struct PF_PreRenderExtra {
    PF_PreRenderInput* input;
    PF_PreRenderOutput* output;
    PF_PreRenderCallbacks* cb;
};

// `pre_render_data` stands where the pre-render input has `gpu_data`.
struct PF_SmartRenderInput {
    PF_RenderRequest output_request;
    A_short bitdepth;
    void* pre_render_data;
    const void* gpu_data;
    A_long what_gpu;
    A_u_long device_index;
};

struct PF_SmartRenderCallbacks {
    PF_Err (*checkout_layer_pixels)(PF_ProgPtr effect_ref, A_long checkout_id,
                                    PF_EffectWorld** pixels);
    PF_Err (*checkin_layer_pixels)(PF_ProgPtr effect_ref, A_long checkout_id);
    PF_Err (*checkout_output)(PF_ProgPtr effect_ref, PF_EffectWorld** output);
};

struct PF_SmartRenderExtra {
    PF_SmartRenderInput* input;
    PF_SmartRenderCallbacks* cb;
};

using PF_EntryPoint = PF_Err (*)(PF_Cmd cmd, PF_InData* in_data, PF_OutData* out_data,
                                 PF_ParamDef** params, PF_LayerDef* output, void* extra);
