// Records that describe pictures: pixels, rectangles, worlds, and how one world is laid over
// another. Members named "reserved" or "unused" belong to the host.
#pragma once

#include "hostapi/scalars.h"

struct PF_Pixel {
    A_u_char alpha, red, green, blue;
};
using PF_Pixel8 = PF_Pixel;

// White is 32768.
struct PF_Pixel16 {
    A_u_short alpha, red, green, blue;
};

struct PF_PixelFloat {
    A_FpShort alpha, red, green, blue;
};

struct PF_LRect {
    A_long left, top, right, bottom;
};
using PF_Rect = PF_LRect;

// h is x, v is y.
struct PF_Point {
    A_long h, v;
};

struct PF_RationalScale {
    A_long num;
    A_u_long den;
};

struct PF_SpecVersion {
    A_short major, minor;
};

// Pixels of 8, 16 or 32 bits a channel; `data` is typed for 8 bits whatever the depth.
struct PF_LayerDef {
    void* reserved0;
    void* reserved1;
    PF_WorldFlags world_flags;
    PF_Pixel* data;
    A_long rowbytes;
    A_long width;
    A_long height;
    PF_LRect extent_hint;
    void* platform_ref;
    A_long reserved_long1;
    void* reserved_long4;
    PF_RationalScale pix_aspect_ratio;
    void* reserved_long2;
    A_long origin_x;
    A_long origin_y;
    A_long reserved_long3;
    A_long dephault;
};
using PF_EffectWorld = PF_LayerDef;
using PF_World = PF_LayerDef;

struct PF_CompositeMode {
    PF_XferMode xfer;
    A_long rand_seed;
    A_u_char opacity;  // 0 to 255, for 8-bit worlds
    PF_Boolean rgb_only;
    A_u_short opacitySu;  // 0 to 32768, for deep worlds
};

struct PF_MaskWorld {
    PF_EffectWorld mask;
    PF_Point offset;
    PF_MaskFlags what_is_mask;
};

// Sound is not used by this effect; the records stand here for the size of those around them.
struct PF_SoundFormatInfo {
    A_FpLong rateF;
    A_short num_channels;
    A_short format;
    A_short sample_size;
};

struct PF_SoundWorld {
    PF_SoundFormatInfo fi;
    A_long num_samples;
    void* dataP;
};
