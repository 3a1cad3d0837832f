// The host's numbers: commands, codes, flags and choices, under the host's names.
#pragma once

#include "hostapi/scalars.h"

enum : PF_Cmd {
    PF_Cmd_ABOUT = 0,
    PF_Cmd_GLOBAL_SETUP = 1,
    PF_Cmd_UNUSED_0 = 2,
    PF_Cmd_GLOBAL_SETDOWN = 3,
    PF_Cmd_PARAMS_SETUP = 4,
    PF_Cmd_SEQUENCE_SETUP = 5,
    PF_Cmd_SEQUENCE_RESETUP = 6,
    PF_Cmd_SEQUENCE_FLATTEN = 7,
    PF_Cmd_SEQUENCE_SETDOWN = 8,
    PF_Cmd_DO_DIALOG = 9,
    PF_Cmd_FRAME_SETUP = 10,
    PF_Cmd_RENDER = 11,
    PF_Cmd_FRAME_SETDOWN = 12,
    PF_Cmd_USER_CHANGED_PARAM = 13,
    PF_Cmd_UPDATE_PARAMS_UI = 14,
    PF_Cmd_EVENT = 15,
    PF_Cmd_GET_EXTERNAL_DEPENDENCIES = 16,
    PF_Cmd_COMPLETELY_GENERAL = 17,
    PF_Cmd_QUERY_DYNAMIC_FLAGS = 18,
    PF_Cmd_AUDIO_RENDER = 19,
    PF_Cmd_AUDIO_SETUP = 20,
    PF_Cmd_AUDIO_SETDOWN = 21,
    PF_Cmd_ARBITRARY_CALLBACK = 22,
    PF_Cmd_SMART_PRE_RENDER = 23,
    PF_Cmd_SMART_RENDER = 24,
};

enum : PF_Err {
    PF_Err_NONE = 0,
    PF_Err_OUT_OF_MEMORY = 4,
    PF_Err_INTERNAL_STRUCT_DAMAGED = 512,
    PF_Err_INVALID_INDEX = 513,
    PF_Err_UNRECOGNIZED_PARAM_TYPE = 514,
    PF_Err_INVALID_CALLBACK = 515,
    PF_Err_BAD_CALLBACK_PARAM = 516,
    PF_Interrupt_CANCEL = 517,  // what abort and progress answer with after a cancel
    PF_Err_CANNOT_PARSE_KEYFRAME_TEXT = 518,
};

enum : PF_ParamType {
    PF_Param_RESERVED = -1,
    PF_Param_LAYER = 0,
    PF_Param_SLIDER = 1,
    PF_Param_FIX_SLIDER = 2,
    PF_Param_ANGLE = 3,
    PF_Param_CHECKBOX = 4,
    PF_Param_COLOR = 5,
    PF_Param_POINT = 6,
    PF_Param_POPUP = 7,
    PF_Param_CUSTOM = 8,
    PF_Param_NO_DATA = 9,
    PF_Param_FLOAT_SLIDER = 10,
    PF_Param_ARBITRARY_DATA = 11,
    PF_Param_PATH = 12,
    PF_Param_GROUP_START = 13,
    PF_Param_GROUP_END = 14,
    PF_Param_BUTTON = 15,
    PF_Param_POINT_3D = 18,
};

enum : PF_ParamFlags {
    PF_ParamFlag_CANNOT_TIME_VARY = 2,
    PF_ParamFlag_CANNOT_INTERP = 4,
    PF_ParamFlag_START_COLLAPSED = 32,
    PF_ParamFlag_COLLAPSE_TWIRLY = 32,  // the same bit under another name
    PF_ParamFlag_SUPERVISE = 64,
    PF_ParamFlag_USE_VALUE_FOR_OLD_PROJECTS = 128,
    PF_ParamFlag_EXCLUDE_FROM_HAVE_INPUTS_CHANGED = 256,
    PF_ParamFlag_SKIP_REVEAL_WHEN_UNHIDDEN = 512,
};

enum : PF_ParamUIFlags {
    PF_PUI_TOPIC = 1,
    PF_PUI_CONTROL = 2,
    PF_PUI_STD_CONTROL_ONLY = 4,
    PF_PUI_NO_ECW_UI = 8,
    PF_PUI_ECW_SEPARATOR = 16,
    PF_PUI_DISABLED = 32,
    PF_PUI_DONT_ERASE_TOPIC = 64,
    PF_PUI_DONT_ERASE_CONTROL = 128,
    PF_PUI_RADIO_BUTTON = 256,
    PF_PUI_INVISIBLE = 512,
};

enum : PF_ChangeFlags {
    PF_ChangeFlag_NONE = 0,
    PF_ChangeFlag_CHANGED_VALUE = 1,
};

enum : PF_OutFlags {
    PF_OutFlag_WIDE_TIME_INPUT = 0x2,
    PF_OutFlag_SEQUENCE_DATA_NEEDS_FLATTENING = 0x10,
    PF_OutFlag_I_DO_DIALOG = 0x20,
    PF_OutFlag_USE_OUTPUT_EXTENT = 0x40,
    PF_OutFlag_DEEP_COLOR_AWARE = 0x2000000,
    PF_OutFlag_SEND_UPDATE_PARAMS_UI = 0x4000000,
};

enum : PF_OutFlags2 {
    PF_OutFlag2_SUPPORTS_QUERY_DYNAMIC_FLAGS = 0x1,
    PF_OutFlag2_PARAM_GROUP_START_COLLAPSED_FLAG = 0x8,
    PF_OutFlag2_I_AM_THREADSAFE = 0x10,
    PF_OutFlag2_SUPPORTS_SMART_RENDER = 0x400,
    PF_OutFlag2_FLOAT_COLOR_AWARE = 0x1000,
};

enum : PF_WorldFlags {
    PF_WorldFlag_DEEP = 1,
    PF_WorldFlag_WRITEABLE = 2,
};

// Flags of the older form of making worlds.
enum : PF_NewWorldFlags {
    PF_NewWorldFlag_NONE = 0,
    PF_NewWorldFlag_CLEAR_PIXELS = 1,
    PF_NewWorldFlag_DEEP_PIXELS = 2,
};

enum : PF_PlatDataID {
    PF_PlatData_MAIN_WND = 0,
    PF_PlatData_EXE_FILE_PATH = 1,
    PF_PlatData_RES_FILE_PATH = 2,
    PF_PlatData_RES_REFNUM = 3,
    PF_PlatData_RES_DLLINSTANCE = 4,
    PF_PlatData_SP_PLUG_REF = 5,
    PF_PlatData_BUNDLE_REF = 6,
    PF_PlatData_EXE_FILE_PATH_W = 7,
    PF_PlatData_RES_FILE_PATH_W = 8,
};

// Characters, with the zero, that a platform data path may take.
inline constexpr std::size_t kPFPlatDataPathRoom = 260;

enum : PF_Quality {
    PF_Quality_DRAWING_AUDIO = -1,
    PF_Quality_LO = 0,
    PF_Quality_HI = 1,
};

enum : PF_Field {
    PF_Field_FRAME = 0,
    PF_Field_UPPER = 1,
    PF_Field_LOWER = 2,
};

enum : PF_ModeFlags {
    PF_MF_Alpha_PREMUL = 0,
    PF_MF_Alpha_STRAIGHT = 1,
};

enum : PF_XferMode {
    PF_Xfer_NONE = -1,
    PF_Xfer_COPY = 0,
    PF_Xfer_BEHIND = 1,
    PF_Xfer_IN_FRONT = 2,
    PF_Xfer_DISSOLVE = 3,
    PF_Xfer_ADD = 4,
    PF_Xfer_MULTIPLY = 5,
    PF_Xfer_SCREEN = 6,
};

enum : PF_MaskFlags {
    PF_MaskFlag_NONE = 0,
    PF_MaskFlag_INVERTED = 1,
    PF_MaskFlag_LUMINANCE = 2,
};

enum : PF_ChannelMask {
    PF_ChannelMask_ALPHA = 1,
    PF_ChannelMask_RED = 2,
    PF_ChannelMask_GREEN = 4,
    PF_ChannelMask_BLUE = 8,
    PF_ChannelMask_ARGB = 15,
};

enum : PF_RenderOutputFlags {
    PF_RenderOutputFlag_RETURNS_EXTRA_PIXELS = 1,
    PF_RenderOutputFlag_GPU_RENDER_POSSIBLE = 2,
};

enum : PF_Precision {
    PF_Precision_INTEGER = 0,
    PF_Precision_TENTHS = 1,
    PF_Precision_HUNDREDTHS = 2,
};

enum : PF_ValueDisplayFlags {
    PF_ValueDisplayFlag_NONE = 0,
    PF_ValueDisplayFlag_PERCENT = 1,
    PF_ValueDisplayFlag_PIXEL = 2,
};

enum : PF_FSliderFlags {
    PF_FSliderFlag_NONE = 0,
    PF_FSliderFlag_WANT_PHASE = 1,
};

// The value of a layer parameter's default.
enum : A_long {
    PF_LayerDefault_MYSELF = -1,
    PF_LayerDefault_NONE = 0,
};

// Pixel formats, written as their four letters in memory.
inline constexpr PF_PixelFormat PF_PixelFormat_ARGB32 = 0x62677261;   // "argb", 8 bits a channel
inline constexpr PF_PixelFormat PF_PixelFormat_ARGB64 = 0x36316561;   // "ae16"
inline constexpr PF_PixelFormat PF_PixelFormat_ARGB128 = 0x32336561;  // "ae32", float
inline constexpr PF_PixelFormat PF_PixelFormat_INVALID = 0x66646162;  // "badf"

// Application ids: four letters, the first in the highest byte.
inline constexpr A_long kAppID_FXTC = 0x46585443;
inline constexpr A_long kAppID_PrMr = 0x50724D72;

inline constexpr A_u_char PF_MAX_CHAN8 = 255;
inline constexpr A_u_short PF_MAX_CHAN16 = 32768;
inline constexpr A_u_char PF_MAX_OPACITY8 = 255;
inline constexpr A_u_short PF_MAX_OPACITY16 = 32768;
inline constexpr A_long kPFMaxWorldSide = 30000;

enum : A_u_long {
    PF_Stage_DEVELOP = 0,
    PF_Stage_ALPHA = 1,
    PF_Stage_BETA = 2,
    PF_Stage_RELEASE = 3,
};

// The packed version word: build bits 0-8, stage 9-10, bug fix 11-14, sub-version 15-18, version
// 19-21 and, above them, from bit 26.
constexpr A_u_long PF_VERSION(A_u_long version, A_u_long subVersion, A_u_long bugFix,
                              A_u_long stage, A_u_long build) {
    return ((version >> 3 & 0xFu) << 26) | ((version & 7u) << 19) | ((subVersion & 0xFu) << 15) |
           ((bugFix & 0xFu) << 11) | ((stage & 3u) << 9) | (build & 0x1FFu);
}
