// The layout of every record of the host's interface: size, alignment, and each member's offset
// and size, in bytes, as the host's own builds have them. A record off by one byte would pass all
// else and crash in the host.
#include <cstddef>
#include <type_traits>

#include "hostapi/hostapi.h"

namespace {

#define RECORD(type, size, align)                                              \
    static_assert(std::is_standard_layout_v<type> && std::is_trivial_v<type>); \
    static_assert(sizeof(type) == (size) && alignof(type) == (align))

#define MEMBER(type, member, offset, size) \
    static_assert(offsetof(type, member) == (offset) && sizeof(type::member) == (size))

RECORD(PF_InData, 408, 8);
MEMBER(PF_InData, inter, 0, 176);
MEMBER(PF_InData, utils, 176, 8);
MEMBER(PF_InData, effect_ref, 184, 8);
MEMBER(PF_InData, quality, 192, 4);
MEMBER(PF_InData, version, 196, 4);
MEMBER(PF_InData, serial_num, 200, 4);
MEMBER(PF_InData, appl_id, 204, 4);
MEMBER(PF_InData, num_params, 208, 4);
MEMBER(PF_InData, reserved, 212, 4);
MEMBER(PF_InData, what_cpu, 216, 4);
MEMBER(PF_InData, what_fpu, 220, 4);
MEMBER(PF_InData, current_time, 224, 4);
MEMBER(PF_InData, time_step, 228, 4);
MEMBER(PF_InData, total_time, 232, 4);
MEMBER(PF_InData, local_time_step, 236, 4);
MEMBER(PF_InData, time_scale, 240, 4);
MEMBER(PF_InData, field, 244, 4);
MEMBER(PF_InData, shutter_angle, 248, 4);
MEMBER(PF_InData, width, 252, 4);
MEMBER(PF_InData, height, 256, 4);
MEMBER(PF_InData, extent_hint, 260, 16);
MEMBER(PF_InData, output_origin_x, 276, 4);
MEMBER(PF_InData, output_origin_y, 280, 4);
MEMBER(PF_InData, downsample_x, 284, 8);
MEMBER(PF_InData, downsample_y, 292, 8);
MEMBER(PF_InData, pixel_aspect_ratio, 300, 8);
MEMBER(PF_InData, in_flags, 308, 4);
MEMBER(PF_InData, global_data, 312, 8);
MEMBER(PF_InData, sequence_data, 320, 8);
MEMBER(PF_InData, frame_data, 328, 8);
MEMBER(PF_InData, start_sampL, 336, 4);
MEMBER(PF_InData, dur_sampL, 340, 4);
MEMBER(PF_InData, total_sampL, 344, 4);
MEMBER(PF_InData, src_snd, 352, 32);
MEMBER(PF_InData, pica_basicP, 384, 8);
MEMBER(PF_InData, pre_effect_source_origin_x, 392, 4);
MEMBER(PF_InData, pre_effect_source_origin_y, 396, 4);
MEMBER(PF_InData, shutter_phase, 400, 4);

RECORD(PF_OutData, 408, 8);
MEMBER(PF_OutData, my_version, 0, 4);
MEMBER(PF_OutData, name, 4, 32);
MEMBER(PF_OutData, global_data, 40, 8);
MEMBER(PF_OutData, num_params, 48, 4);
MEMBER(PF_OutData, sequence_data, 56, 8);
MEMBER(PF_OutData, flat_sdata_size, 64, 4);
MEMBER(PF_OutData, frame_data, 72, 8);
MEMBER(PF_OutData, width, 80, 4);
MEMBER(PF_OutData, height, 84, 4);
MEMBER(PF_OutData, origin, 88, 8);
MEMBER(PF_OutData, out_flags, 96, 4);
MEMBER(PF_OutData, return_msg, 100, 256);
MEMBER(PF_OutData, start_sampL, 356, 4);
MEMBER(PF_OutData, dur_sampL, 360, 4);
MEMBER(PF_OutData, dest_snd, 368, 32);
MEMBER(PF_OutData, out_flags2, 400, 4);

RECORD(PF_ParamDef, 176, 8);
MEMBER(PF_ParamDef, uu, 0, 4);
MEMBER(PF_ParamDef, ui_flags, 4, 4);
MEMBER(PF_ParamDef, ui_width, 8, 2);
MEMBER(PF_ParamDef, ui_height, 10, 2);
MEMBER(PF_ParamDef, param_type, 12, 4);
MEMBER(PF_ParamDef, name, 16, 32);
MEMBER(PF_ParamDef, flags, 48, 4);
MEMBER(PF_ParamDef, unused, 52, 4);
MEMBER(PF_ParamDef, u, 56, 120);

RECORD(PF_ParamDefUnion, 120, 8);
MEMBER(PF_ParamDefUnion, ld, 0, 120);
MEMBER(PF_ParamDefUnion, sd, 0, 88);
MEMBER(PF_ParamDefUnion, ad, 0, 16);
MEMBER(PF_ParamDefUnion, bd, 0, 16);
MEMBER(PF_ParamDefUnion, cd, 0, 8);
MEMBER(PF_ParamDefUnion, td, 0, 20);
MEMBER(PF_ParamDefUnion, fs_d, 0, 88);

RECORD(PF_SliderDef, 88, 4);
MEMBER(PF_SliderDef, value, 0, 4);
MEMBER(PF_SliderDef, value_str, 4, 32);
MEMBER(PF_SliderDef, value_desc, 36, 32);
MEMBER(PF_SliderDef, valid_min, 68, 4);
MEMBER(PF_SliderDef, valid_max, 72, 4);
MEMBER(PF_SliderDef, slider_min, 76, 4);
MEMBER(PF_SliderDef, slider_max, 80, 4);
MEMBER(PF_SliderDef, dephault, 84, 4);

RECORD(PF_FloatSliderDef, 88, 8);
MEMBER(PF_FloatSliderDef, value, 0, 8);
MEMBER(PF_FloatSliderDef, phase, 8, 8);
MEMBER(PF_FloatSliderDef, value_desc, 16, 32);
MEMBER(PF_FloatSliderDef, valid_min, 48, 4);
MEMBER(PF_FloatSliderDef, valid_max, 52, 4);
MEMBER(PF_FloatSliderDef, slider_min, 56, 4);
MEMBER(PF_FloatSliderDef, slider_max, 60, 4);
MEMBER(PF_FloatSliderDef, dephault, 64, 4);
MEMBER(PF_FloatSliderDef, precision, 68, 2);
MEMBER(PF_FloatSliderDef, display_flags, 70, 2);
MEMBER(PF_FloatSliderDef, fs_flags, 72, 4);
MEMBER(PF_FloatSliderDef, curve_tolerance, 76, 4);
MEMBER(PF_FloatSliderDef, useExponent, 80, 1);
MEMBER(PF_FloatSliderDef, exponent, 84, 4);

RECORD(PF_CheckBoxDef, 16, 8);
MEMBER(PF_CheckBoxDef, value, 0, 4);
MEMBER(PF_CheckBoxDef, dephault, 4, 1);
MEMBER(PF_CheckBoxDef, reserved, 5, 1);
MEMBER(PF_CheckBoxDef, reserved1, 6, 2);
MEMBER(PF_CheckBoxDef, u, 8, 8);

RECORD(PF_ColorDef, 8, 1);
MEMBER(PF_ColorDef, value, 0, 4);
MEMBER(PF_ColorDef, dephault, 4, 4);

RECORD(PF_PointDef, 20, 4);
MEMBER(PF_PointDef, x_value, 0, 4);
MEMBER(PF_PointDef, y_value, 4, 4);
MEMBER(PF_PointDef, reserved, 8, 3);
MEMBER(PF_PointDef, restrict_bounds, 11, 1);
MEMBER(PF_PointDef, x_dephault, 12, 4);
MEMBER(PF_PointDef, y_dephault, 16, 4);

RECORD(PF_AngleDef, 16, 4);
MEMBER(PF_AngleDef, value, 0, 4);
MEMBER(PF_AngleDef, dephault, 4, 4);
MEMBER(PF_AngleDef, valid_min, 8, 4);
MEMBER(PF_AngleDef, valid_max, 12, 4);

RECORD(PF_LayerDef, 120, 8);
MEMBER(PF_LayerDef, reserved0, 0, 8);
MEMBER(PF_LayerDef, reserved1, 8, 8);
MEMBER(PF_LayerDef, world_flags, 16, 4);
MEMBER(PF_LayerDef, data, 24, 8);
MEMBER(PF_LayerDef, rowbytes, 32, 4);
MEMBER(PF_LayerDef, width, 36, 4);
MEMBER(PF_LayerDef, height, 40, 4);
MEMBER(PF_LayerDef, extent_hint, 44, 16);
MEMBER(PF_LayerDef, platform_ref, 64, 8);
MEMBER(PF_LayerDef, reserved_long1, 72, 4);
MEMBER(PF_LayerDef, reserved_long4, 80, 8);
MEMBER(PF_LayerDef, pix_aspect_ratio, 88, 8);
MEMBER(PF_LayerDef, reserved_long2, 96, 8);
MEMBER(PF_LayerDef, origin_x, 104, 4);
MEMBER(PF_LayerDef, origin_y, 108, 4);
MEMBER(PF_LayerDef, reserved_long3, 112, 4);
MEMBER(PF_LayerDef, dephault, 116, 4);

RECORD(PF_Pixel, 4, 1);
MEMBER(PF_Pixel, alpha, 0, 1);
MEMBER(PF_Pixel, red, 1, 1);
MEMBER(PF_Pixel, green, 2, 1);
MEMBER(PF_Pixel, blue, 3, 1);

RECORD(PF_Pixel16, 8, 2);
MEMBER(PF_Pixel16, alpha, 0, 2);
MEMBER(PF_Pixel16, red, 2, 2);
MEMBER(PF_Pixel16, green, 4, 2);
MEMBER(PF_Pixel16, blue, 6, 2);

RECORD(PF_PixelFloat, 16, 4);
MEMBER(PF_PixelFloat, alpha, 0, 4);
MEMBER(PF_PixelFloat, red, 4, 4);
MEMBER(PF_PixelFloat, green, 8, 4);
MEMBER(PF_PixelFloat, blue, 12, 4);

RECORD(PF_LRect, 16, 4);
MEMBER(PF_LRect, left, 0, 4);
MEMBER(PF_LRect, top, 4, 4);
MEMBER(PF_LRect, right, 8, 4);
MEMBER(PF_LRect, bottom, 12, 4);

RECORD(PF_Point, 8, 4);
MEMBER(PF_Point, h, 0, 4);
MEMBER(PF_Point, v, 4, 4);

RECORD(PF_RationalScale, 8, 4);
MEMBER(PF_RationalScale, num, 0, 4);
MEMBER(PF_RationalScale, den, 4, 4);

RECORD(PF_SpecVersion, 4, 2);
MEMBER(PF_SpecVersion, major, 0, 2);
MEMBER(PF_SpecVersion, minor, 2, 2);

RECORD(PF_SoundFormatInfo, 16, 8);
MEMBER(PF_SoundFormatInfo, rateF, 0, 8);
MEMBER(PF_SoundFormatInfo, num_channels, 8, 2);
MEMBER(PF_SoundFormatInfo, format, 10, 2);
MEMBER(PF_SoundFormatInfo, sample_size, 12, 2);

RECORD(PF_SoundWorld, 32, 8);
MEMBER(PF_SoundWorld, fi, 0, 16);
MEMBER(PF_SoundWorld, num_samples, 16, 4);
MEMBER(PF_SoundWorld, dataP, 24, 8);

RECORD(PF_CompositeMode, 12, 4);
MEMBER(PF_CompositeMode, xfer, 0, 4);
MEMBER(PF_CompositeMode, rand_seed, 4, 4);
MEMBER(PF_CompositeMode, opacity, 8, 1);
MEMBER(PF_CompositeMode, rgb_only, 9, 1);
MEMBER(PF_CompositeMode, opacitySu, 10, 2);

RECORD(PF_MaskWorld, 136, 8);
MEMBER(PF_MaskWorld, mask, 0, 120);
MEMBER(PF_MaskWorld, offset, 120, 8);
MEMBER(PF_MaskWorld, what_is_mask, 128, 4);

RECORD(PF_UserChangedParamExtra, 4, 4);
MEMBER(PF_UserChangedParamExtra, param_index, 0, 4);

RECORD(PF_RenderRequest, 44, 4);
MEMBER(PF_RenderRequest, rect, 0, 16);
MEMBER(PF_RenderRequest, field, 16, 4);
MEMBER(PF_RenderRequest, channel_mask, 20, 4);
MEMBER(PF_RenderRequest, preserve_rgb_of_zero_alpha, 24, 1);
MEMBER(PF_RenderRequest, unused, 25, 3);
MEMBER(PF_RenderRequest, reserved, 28, 16);

RECORD(PF_CheckoutResult, 76, 4);
MEMBER(PF_CheckoutResult, result_rect, 0, 16);
MEMBER(PF_CheckoutResult, max_result_rect, 16, 16);
MEMBER(PF_CheckoutResult, par, 32, 8);
MEMBER(PF_CheckoutResult, solid, 40, 1);
MEMBER(PF_CheckoutResult, reservedB, 41, 3);
MEMBER(PF_CheckoutResult, ref_width, 44, 4);
MEMBER(PF_CheckoutResult, ref_height, 48, 4);
MEMBER(PF_CheckoutResult, reserved, 52, 24);

RECORD(PF_PreRenderExtra, 24, 8);
MEMBER(PF_PreRenderExtra, input, 0, 8);
MEMBER(PF_PreRenderExtra, output, 8, 8);
MEMBER(PF_PreRenderExtra, cb, 16, 8);

RECORD(PF_PreRenderInput, 64, 8);
MEMBER(PF_PreRenderInput, output_request, 0, 44);
MEMBER(PF_PreRenderInput, bitdepth, 44, 2);
MEMBER(PF_PreRenderInput, gpu_data, 48, 8);
MEMBER(PF_PreRenderInput, what_gpu, 56, 4);
MEMBER(PF_PreRenderInput, device_index, 60, 4);

RECORD(PF_PreRenderOutput, 56, 8);
MEMBER(PF_PreRenderOutput, result_rect, 0, 16);
MEMBER(PF_PreRenderOutput, max_result_rect, 16, 16);
MEMBER(PF_PreRenderOutput, solid, 32, 1);
MEMBER(PF_PreRenderOutput, reserved, 33, 1);
MEMBER(PF_PreRenderOutput, flags, 34, 2);
MEMBER(PF_PreRenderOutput, pre_render_data, 40, 8);
MEMBER(PF_PreRenderOutput, delete_pre_render_data_func, 48, 8);

RECORD(PF_SmartRenderExtra, 16, 8);
MEMBER(PF_SmartRenderExtra, input, 0, 8);
MEMBER(PF_SmartRenderExtra, cb, 8, 8);

RECORD(PF_SmartRenderInput, 72, 8);
MEMBER(PF_SmartRenderInput, output_request, 0, 44);
MEMBER(PF_SmartRenderInput, bitdepth, 44, 2);
MEMBER(PF_SmartRenderInput, pre_render_data, 48, 8);
MEMBER(PF_SmartRenderInput, gpu_data, 56, 8);
MEMBER(PF_SmartRenderInput, what_gpu, 64, 4);
MEMBER(PF_SmartRenderInput, device_index, 68, 4);

RECORD(PF_InteractCallbacks, 176, 8);
MEMBER(PF_InteractCallbacks, checkout_param, 0, 8);
MEMBER(PF_InteractCallbacks, checkin_param, 8, 8);
MEMBER(PF_InteractCallbacks, add_param, 16, 8);
MEMBER(PF_InteractCallbacks, abort, 24, 8);
MEMBER(PF_InteractCallbacks, progress, 32, 8);
MEMBER(PF_InteractCallbacks, register_ui, 40, 8);
MEMBER(PF_InteractCallbacks, checkout_layer_audio, 48, 8);
MEMBER(PF_InteractCallbacks, checkin_layer_audio, 56, 8);
MEMBER(PF_InteractCallbacks, get_audio_data, 64, 8);
MEMBER(PF_InteractCallbacks, reserved_str, 72, 24);
MEMBER(PF_InteractCallbacks, reserved, 96, 80);

RECORD(PF_UtilCallbacks, 552, 8);
MEMBER(PF_UtilCallbacks, begin_sampling, 0, 8);
MEMBER(PF_UtilCallbacks, subpixel_sample, 8, 8);
MEMBER(PF_UtilCallbacks, area_sample, 16, 8);
MEMBER(PF_UtilCallbacks, get_batch_func_is_deprecated, 24, 8);
MEMBER(PF_UtilCallbacks, end_sampling, 32, 8);
MEMBER(PF_UtilCallbacks, composite_rect, 40, 8);
MEMBER(PF_UtilCallbacks, blend, 48, 8);
MEMBER(PF_UtilCallbacks, convolve, 56, 8);
MEMBER(PF_UtilCallbacks, copy, 64, 8);
MEMBER(PF_UtilCallbacks, fill, 72, 8);
MEMBER(PF_UtilCallbacks, gaussian_kernel, 80, 8);
MEMBER(PF_UtilCallbacks, iterate, 88, 8);
MEMBER(PF_UtilCallbacks, premultiply, 96, 8);
MEMBER(PF_UtilCallbacks, premultiply_color, 104, 8);
MEMBER(PF_UtilCallbacks, new_world, 112, 8);
MEMBER(PF_UtilCallbacks, dispose_world, 120, 8);
MEMBER(PF_UtilCallbacks, iterate_origin, 128, 8);
MEMBER(PF_UtilCallbacks, iterate_lut, 136, 8);
MEMBER(PF_UtilCallbacks, transfer_rect, 144, 8);
MEMBER(PF_UtilCallbacks, transform_world, 152, 8);
MEMBER(PF_UtilCallbacks, host_new_handle, 160, 8);
MEMBER(PF_UtilCallbacks, host_lock_handle, 168, 8);
MEMBER(PF_UtilCallbacks, host_unlock_handle, 176, 8);
MEMBER(PF_UtilCallbacks, host_dispose_handle, 184, 8);
MEMBER(PF_UtilCallbacks, get_callback_addr, 192, 8);
MEMBER(PF_UtilCallbacks, app, 200, 8);
MEMBER(PF_UtilCallbacks, ansi, 208, 160);
MEMBER(PF_UtilCallbacks, colorCB, 368, 64);
MEMBER(PF_UtilCallbacks, get_platform_data, 432, 8);
MEMBER(PF_UtilCallbacks, host_get_handle_size, 440, 8);
MEMBER(PF_UtilCallbacks, iterate_origin_non_clip_src, 448, 8);
MEMBER(PF_UtilCallbacks, iterate_generic, 456, 8);
MEMBER(PF_UtilCallbacks, host_resize_handle, 464, 8);
MEMBER(PF_UtilCallbacks, subpixel_sample16, 472, 8);
MEMBER(PF_UtilCallbacks, area_sample16, 480, 8);
MEMBER(PF_UtilCallbacks, fill16, 488, 8);
MEMBER(PF_UtilCallbacks, premultiply_color16, 496, 8);
MEMBER(PF_UtilCallbacks, iterate16, 504, 8);
MEMBER(PF_UtilCallbacks, iterate_origin16, 512, 8);
MEMBER(PF_UtilCallbacks, iterate_origin_non_clip_src16, 520, 8);
MEMBER(PF_UtilCallbacks, get_pixel_data8, 528, 8);
MEMBER(PF_UtilCallbacks, get_pixel_data16, 536, 8);
MEMBER(PF_UtilCallbacks, reserved, 544, 4);

RECORD(PF_ANSICallbacks, 160, 8);
MEMBER(PF_ANSICallbacks, atan, 0, 8);
MEMBER(PF_ANSICallbacks, atan2, 8, 8);
MEMBER(PF_ANSICallbacks, ceil, 16, 8);
MEMBER(PF_ANSICallbacks, cos, 24, 8);
MEMBER(PF_ANSICallbacks, exp, 32, 8);
MEMBER(PF_ANSICallbacks, fabs, 40, 8);
MEMBER(PF_ANSICallbacks, floor, 48, 8);
MEMBER(PF_ANSICallbacks, fmod, 56, 8);
MEMBER(PF_ANSICallbacks, hypot, 64, 8);
MEMBER(PF_ANSICallbacks, log, 72, 8);
MEMBER(PF_ANSICallbacks, log10, 80, 8);
MEMBER(PF_ANSICallbacks, pow, 88, 8);
MEMBER(PF_ANSICallbacks, sin, 96, 8);
MEMBER(PF_ANSICallbacks, sqrt, 104, 8);
MEMBER(PF_ANSICallbacks, tan, 112, 8);
MEMBER(PF_ANSICallbacks, sprintf, 120, 8);
MEMBER(PF_ANSICallbacks, strcpy, 128, 8);
MEMBER(PF_ANSICallbacks, asin, 136, 8);
MEMBER(PF_ANSICallbacks, acos, 144, 8);
MEMBER(PF_ANSICallbacks, unused_long, 152, 4);

RECORD(PF_PreRenderCallbacks, 16, 8);
MEMBER(PF_PreRenderCallbacks, checkout_layer, 0, 8);
MEMBER(PF_PreRenderCallbacks, GuidMixInPtr, 8, 8);

RECORD(PF_SmartRenderCallbacks, 24, 8);
MEMBER(PF_SmartRenderCallbacks, checkout_layer_pixels, 0, 8);
MEMBER(PF_SmartRenderCallbacks, checkin_layer_pixels, 8, 8);
MEMBER(PF_SmartRenderCallbacks, checkout_output, 16, 8);

RECORD(SPBasicSuite, 56, 8);
MEMBER(SPBasicSuite, AcquireSuite, 0, 8);
MEMBER(SPBasicSuite, ReleaseSuite, 8, 8);
MEMBER(SPBasicSuite, IsEqual, 16, 8);
MEMBER(SPBasicSuite, AllocateBlock, 24, 8);
MEMBER(SPBasicSuite, FreeBlock, 32, 8);
MEMBER(SPBasicSuite, ReallocateBlock, 40, 8);
MEMBER(SPBasicSuite, Undefined, 48, 8);

RECORD(PF_HandleSuite1, 48, 8);
MEMBER(PF_HandleSuite1, host_new_handle, 0, 8);
MEMBER(PF_HandleSuite1, host_lock_handle, 8, 8);
MEMBER(PF_HandleSuite1, host_unlock_handle, 16, 8);
MEMBER(PF_HandleSuite1, host_dispose_handle, 24, 8);
MEMBER(PF_HandleSuite1, host_get_handle_size, 32, 8);
MEMBER(PF_HandleSuite1, host_resize_handle, 40, 8);

RECORD(PF_WorldSuite1, 16, 8);
MEMBER(PF_WorldSuite1, new_world, 0, 8);
MEMBER(PF_WorldSuite1, dispose_world, 8, 8);

RECORD(PF_WorldSuite2, 24, 8);
MEMBER(PF_WorldSuite2, PF_NewWorld, 0, 8);
MEMBER(PF_WorldSuite2, PF_DisposeWorld, 8, 8);
MEMBER(PF_WorldSuite2, PF_GetPixelFormat, 16, 8);

RECORD(PF_FillMatteSuite2, 56, 8);
MEMBER(PF_FillMatteSuite2, fill, 0, 8);
MEMBER(PF_FillMatteSuite2, fill16, 8, 8);
MEMBER(PF_FillMatteSuite2, fill_float, 16, 8);
MEMBER(PF_FillMatteSuite2, premultiply, 24, 8);
MEMBER(PF_FillMatteSuite2, premultiply_color, 32, 8);
MEMBER(PF_FillMatteSuite2, premultiply_color16, 40, 8);
MEMBER(PF_FillMatteSuite2, premultiply_color_float, 48, 8);

RECORD(PF_WorldTransformSuite1, 56, 8);
MEMBER(PF_WorldTransformSuite1, composite_rect, 0, 8);
MEMBER(PF_WorldTransformSuite1, blend, 8, 8);
MEMBER(PF_WorldTransformSuite1, convolve, 16, 8);
MEMBER(PF_WorldTransformSuite1, copy, 24, 8);
MEMBER(PF_WorldTransformSuite1, copy_hq, 32, 8);
MEMBER(PF_WorldTransformSuite1, transfer_rect, 40, 8);
MEMBER(PF_WorldTransformSuite1, transform_world, 48, 8);

RECORD(PF_ParamUtilsSuite1, 80, 8);
MEMBER(PF_ParamUtilsSuite1, PF_UpdateParamUI, 0, 8);
MEMBER(PF_ParamUtilsSuite1, PF_GetCurrentState, 8, 8);
MEMBER(PF_ParamUtilsSuite1, PF_HasParamChanged, 16, 8);
MEMBER(PF_ParamUtilsSuite1, PF_HaveInputsChangedOverTimeSpan, 24, 8);
MEMBER(PF_ParamUtilsSuite1, PF_IsIdenticalCheckout, 32, 8);
MEMBER(PF_ParamUtilsSuite1, PF_FindKeyframeTime, 40, 8);
MEMBER(PF_ParamUtilsSuite1, PF_GetKeyframeCount, 48, 8);
MEMBER(PF_ParamUtilsSuite1, PF_CheckoutKeyframe, 56, 8);
MEMBER(PF_ParamUtilsSuite1, PF_CheckinKeyframe, 64, 8);
MEMBER(PF_ParamUtilsSuite1, PF_KeyIndexToTime, 72, 8);

RECORD(PFAppSuite4, 88, 8);
MEMBER(PFAppSuite4, PF_AppGetBgColor, 0, 8);
MEMBER(PFAppSuite4, PF_AppGetColor, 8, 8);
MEMBER(PFAppSuite4, PF_GetPersonalInfo, 16, 8);
MEMBER(PFAppSuite4, PF_GetFontStyleSheet, 24, 8);
MEMBER(PFAppSuite4, PF_SetCursor, 32, 8);
MEMBER(PFAppSuite4, PF_IsRenderEngine, 40, 8);
MEMBER(PFAppSuite4, PF_AppColorPickerDialog, 48, 8);
MEMBER(PFAppSuite4, PF_GetMouse, 56, 8);
MEMBER(PFAppSuite4, PF_InvalidateRect, 64, 8);
MEMBER(PFAppSuite4, PF_ConvertLocalToGlobal, 72, 8);
MEMBER(PFAppSuite4, PF_GetColorAtGlobalPoint, 80, 8);

static_assert(PF_VERSION(1, 5, 2, PF_Stage_RELEASE, 3) == 693763);
static_assert(sizeof(PF_Boolean) == 1 && sizeof(A_long) == 4 && sizeof(PF_Handle) == 8);

}  // namespace
