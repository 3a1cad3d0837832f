// The host's suites: tables acquired by name and number from the basic suite.
#pragma once

#include "hostapi/callbacks.h"

// Suite and number as they are acquired. The number in a record's name is not the one to ask for.
inline constexpr char kPFHandleSuite[] = "PF Handle Suite";
inline constexpr A_long kPFHandleSuiteVersion = 2;
inline constexpr char kPFWorldSuite[] = "PF World Suite";
inline constexpr A_long kPFWorldSuiteVersion1 = 1;
inline constexpr A_long kPFWorldSuiteVersion2 = 2;
inline constexpr char kPFFillMatteSuite[] = "PF Fill Matte Suite";
inline constexpr A_long kPFFillMatteSuiteVersion = 2;
inline constexpr char kPFWorldTransformSuite[] = "PF World Transform Suite";
inline constexpr A_long kPFWorldTransformSuiteVersion = 1;
inline constexpr char kPFParamUtilsSuite[] = "PF Param Utils Suite";
inline constexpr A_long kPFParamUtilsSuiteVersion = 2;
inline constexpr char kPFAppSuite[] = "PF AE App Suite";
inline constexpr A_long kPFAppSuiteVersion = 6;

struct SPBasicSuite {
    SPErr (*AcquireSuite)(const A_char* name, A_long version, const void** suite);
    SPErr (*ReleaseSuite)(const A_char* name, A_long version);
    A_long (*IsEqual)(const A_char* token1, const A_char* token2);
    SPErr (*AllocateBlock)(std::size_t size, void** block);
    SPErr (*FreeBlock)(void* block);
    SPErr (*ReallocateBlock)(void* block, std::size_t new_size, void** new_block);
    SPErr (*Undefined)();
};

struct PF_HandleSuite1 {
    PF_Handle (*host_new_handle)(A_HandleSize size);
    void* (*host_lock_handle)(PF_Handle handle);
    void (*host_unlock_handle)(PF_Handle handle);
    void (*host_dispose_handle)(PF_Handle handle);
    A_HandleSize (*host_get_handle_size)(PF_Handle handle);
    PF_Err (*host_resize_handle)(A_HandleSize new_size, PF_Handle* handle);
};

struct PF_WorldSuite1 {
    PF_Err (*new_world)(PF_ProgPtr effect_ref, A_long width, A_long height, PF_NewWorldFlags flags,
                        PF_EffectWorld* world);
    PF_Err (*dispose_world)(PF_ProgPtr effect_ref, PF_EffectWorld* world);
};

struct PF_WorldSuite2 {
    PF_Err (*PF_NewWorld)(PF_ProgPtr effect_ref, A_long width, A_long height, PF_Boolean clear,
                          PF_PixelFormat format, PF_EffectWorld* world);
    PF_Err (*PF_DisposeWorld)(PF_ProgPtr effect_ref, PF_EffectWorld* world);
    PF_Err (*PF_GetPixelFormat)(const PF_EffectWorld* world, PF_PixelFormat* format);
};

// A null colour means black with alpha 0, a null rectangle the whole world.
struct PF_FillMatteSuite2 {
    PF_Err (*fill)(PF_ProgPtr effect_ref, const PF_Pixel* color, const PF_Rect* dst_rect,
                   PF_EffectWorld* world);
    PF_Err (*fill16)(PF_ProgPtr effect_ref, const PF_Pixel16* color, const PF_Rect* dst_rect,
                     PF_EffectWorld* world);
    PF_Err (*fill_float)(PF_ProgPtr effect_ref, const PF_PixelFloat* color, const PF_Rect* dst_rect,
                         PF_EffectWorld* world);
    PF_Err (*premultiply)(PF_ProgPtr effect_ref, A_long forward, PF_EffectWorld* dst);
    PF_Err (*premultiply_color)(PF_ProgPtr effect_ref, PF_EffectWorld* src, const PF_Pixel* color,
                                A_long forward, PF_EffectWorld* dst);
    PF_Err (*premultiply_color16)(PF_ProgPtr effect_ref, PF_EffectWorld* src,
                                  const PF_Pixel16* color, A_long forward, PF_EffectWorld* dst);
    PF_Err (*premultiply_color_float)(PF_ProgPtr effect_ref, PF_EffectWorld* src,
                                      const PF_PixelFloat* color, A_long forward,
                                      PF_EffectWorld* dst);
};

struct PF_WorldTransformSuite1 {
    void* composite_rect;
    void* blend;
    void* convolve;
    // A null rectangle means the whole world.
    PF_Err (*copy)(PF_ProgPtr effect_ref, PF_EffectWorld* src, PF_EffectWorld* dst, PF_Rect* src_r,
                   PF_Rect* dst_r);
    PF_Err (*copy_hq)(PF_ProgPtr effect_ref, PF_EffectWorld* src, PF_EffectWorld* dst,
                      PF_Rect* src_r, PF_Rect* dst_r);
    PF_TransferRectProc transfer_rect;
    void* transform_world;
};

struct PF_ParamUtilsSuite1 {
    PF_Err (*PF_UpdateParamUI)(PF_ProgPtr effect_ref, PF_ParamIndex param_index,
                               const PF_ParamDef* def);
    void* PF_GetCurrentState;
    void* PF_HasParamChanged;
    void* PF_HaveInputsChangedOverTimeSpan;
    void* PF_IsIdenticalCheckout;
    void* PF_FindKeyframeTime;
    void* PF_GetKeyframeCount;
    void* PF_CheckoutKeyframe;
    void* PF_CheckinKeyframe;
    void* PF_KeyIndexToTime;
};

// Acquired under number 6 only: other numbers of the name give other records.
struct PFAppSuite4 {
    void* PF_AppGetBgColor;
    void* PF_AppGetColor;
    void* PF_GetPersonalInfo;
    void* PF_GetFontStyleSheet;
    void* PF_SetCursor;
    PF_Err (*PF_IsRenderEngine)(PF_Boolean* render_engine);
    void* PF_AppColorPickerDialog;
    void* PF_GetMouse;
    void* PF_InvalidateRect;
    void* PF_ConvertLocalToGlobal;
    void* PF_GetColorAtGlobalPoint;
};
