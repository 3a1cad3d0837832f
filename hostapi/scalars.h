// The host's scalar types, under the host's names, by their widths on 64-bit Windows and Linux.
#pragma once

#include <cstddef>
#include <cstdint>

using A_char = char;
using A_u_char = std::uint8_t;
using A_Boolean = std::uint8_t;
using A_short = std::int16_t;
using A_u_short = std::uint16_t;
using A_long = std::int32_t;
using A_u_long = std::uint32_t;
using A_FpShort = float;
using A_FpLong = double;
using A_HandleSize = std::uint64_t;

// One byte, signed; 0 is false.
using PF_Boolean = std::int8_t;

// Both are 16.16 fixed point.
using PF_Fixed = std::int32_t;
using PF_UFixed = std::uint32_t;

using PF_Err = std::int32_t;
using SPErr = std::int32_t;
using PF_Cmd = std::int32_t;
using PF_ParamIndex = std::int32_t;
using PF_ParamValue = std::int32_t;
using PF_ParamType = std::int32_t;
using PF_ParamFlags = std::int32_t;
using PF_ParamUIFlags = std::int32_t;
using PF_ChangeFlags = std::int32_t;
using PF_OutFlags = std::int32_t;
using PF_OutFlags2 = std::int32_t;
using PF_WorldFlags = std::int32_t;
using PF_NewWorldFlags = std::int32_t;
using PF_Quality = std::int32_t;
using PF_Field = std::int32_t;
using PF_PixelFormat = std::int32_t;
using PF_XferMode = std::int32_t;
using PF_ModeFlags = std::int32_t;
using PF_MaskFlags = std::int32_t;
using PF_ChannelMask = std::int32_t;
using PF_PlatDataID = std::int32_t;
using PF_FSliderFlags = std::uint32_t;
using PF_Precision = std::int16_t;
using PF_ValueDisplayFlags = std::int16_t;
using PF_RenderOutputFlags = std::int16_t;

// What stands behind an effect_ref is the host's own business.
struct PF_ProgressInfo;
using PF_ProgPtr = PF_ProgressInfo*;

// The first pointer behind a handle is its address; only a locked handle's address is stable.
using PF_Handle = void**;
