// The host's callback tables: what the effect calls through pointers in the command's records.
// Entries this effect does not use are plain pointers.
#pragma once

#include "hostapi/parameters.h"

struct PF_InteractCallbacks {
    PF_Err (*checkout_param)(PF_ProgPtr effect_ref, PF_ParamIndex index, A_long what_time,
                             A_long time_step, A_u_long time_scale, PF_ParamDef* param);
    PF_Err (*checkin_param)(PF_ProgPtr effect_ref, PF_ParamDef* param);
    PF_Err (*add_param)(PF_ProgPtr effect_ref, PF_ParamIndex index, PF_ParamDef* def);
    PF_Err (*abort)(PF_ProgPtr effect_ref);
    PF_Err (*progress)(PF_ProgPtr effect_ref, A_long current, A_long total);
    void* register_ui;
    void* checkout_layer_audio;
    void* checkin_layer_audio;
    void* get_audio_data;
    void* reserved_str[3];
    void* reserved[10];
};

struct PF_ANSICallbacks {
    A_FpLong (*atan)(A_FpLong);
    A_FpLong (*atan2)(A_FpLong y, A_FpLong x);
    A_FpLong (*ceil)(A_FpLong);
    A_FpLong (*cos)(A_FpLong);
    A_FpLong (*exp)(A_FpLong);
    A_FpLong (*fabs)(A_FpLong);
    A_FpLong (*floor)(A_FpLong);
    A_FpLong (*fmod)(A_FpLong, A_FpLong);
    A_FpLong (*hypot)(A_FpLong, A_FpLong);
    A_FpLong (*log)(A_FpLong);
    A_FpLong (*log10)(A_FpLong);
    A_FpLong (*pow)(A_FpLong, A_FpLong);
    A_FpLong (*sin)(A_FpLong);
    A_FpLong (*sqrt)(A_FpLong);
    A_FpLong (*tan)(A_FpLong);
    int (*sprintf)(A_char* buffer, const A_char* format, ...);
    A_char* (*strcpy)(A_char* to, const A_char* from);
    A_FpLong (*asin)(A_FpLong);
    A_FpLong (*acos)(A_FpLong);
    A_long unused_long;
};

using PF_TransferRectProc = PF_Err (*)(PF_ProgPtr effect_ref, PF_Quality quality,
                                       PF_ModeFlags mode_flags, PF_Field field,
                                       const PF_Rect* src_rect, const PF_EffectWorld* src,
                                       const PF_CompositeMode* mode, const PF_MaskWorld* mask,
                                       A_long dest_x, A_long dest_y, PF_EffectWorld* dst);

struct PF_UtilCallbacks {
    void* begin_sampling;
    void* subpixel_sample;
    void* area_sample;
    void* get_batch_func_is_deprecated;
    void* end_sampling;
    void* composite_rect;
    void* blend;
    void* convolve;
    // A null rectangle means the whole world.
    PF_Err (*copy)(PF_ProgPtr effect_ref, PF_EffectWorld* src, PF_EffectWorld* dst, PF_Rect* src_r,
                   PF_Rect* dst_r);
    PF_Err (*fill)(PF_ProgPtr effect_ref, const PF_Pixel* color, const PF_Rect* dst_rect,
                   PF_EffectWorld* world);
    void* gaussian_kernel;
    void* iterate;
    void* premultiply;
    void* premultiply_color;
    PF_Err (*new_world)(PF_ProgPtr effect_ref, A_long width, A_long height, PF_NewWorldFlags flags,
                        PF_EffectWorld* world);
    PF_Err (*dispose_world)(PF_ProgPtr effect_ref, PF_EffectWorld* world);
    void* iterate_origin;
    void* iterate_lut;
    PF_TransferRectProc transfer_rect;
    void* transform_world;
    PF_Handle (*host_new_handle)(A_HandleSize size);
    void* (*host_lock_handle)(PF_Handle handle);
    void (*host_unlock_handle)(PF_Handle handle);
    void (*host_dispose_handle)(PF_Handle handle);
    void* get_callback_addr;
    void* app;
    PF_ANSICallbacks ansi;
    void* colorCB[8];
    PF_Err (*get_platform_data)(PF_ProgPtr effect_ref, PF_PlatDataID which, void* data);
    A_HandleSize (*host_get_handle_size)(PF_Handle handle);
    void* iterate_origin_non_clip_src;
    void* iterate_generic;
    PF_Err (*host_resize_handle)(A_HandleSize new_size, PF_Handle* handle);
    void* subpixel_sample16;
    void* area_sample16;
    PF_Err (*fill16)(PF_ProgPtr effect_ref, const PF_Pixel16* color, const PF_Rect* dst_rect,
                     PF_EffectWorld* world);
    void* premultiply_color16;
    void* iterate16;
    void* iterate_origin16;
    void* iterate_origin_non_clip_src16;
    void* get_pixel_data8;
    void* get_pixel_data16;
    A_long reserved[1];
};
